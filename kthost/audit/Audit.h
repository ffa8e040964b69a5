#pragma once

#include "kthost/audit/Leftovers.h"

#include <string>
#include <utility>
#include <vector>

namespace kthost {

/// What was left behind, one line each (UTF-8).
struct AuditReport {
    std::vector<std::string> findings;

    bool clean() const { return findings.empty(); }
};

/// Looks for what modules leave behind. After a module has been told to unload, and while it is still in
/// memory, that is whatever points into it; at the host's end, whatever is there at all.
class Audit {
public:
    void addSource(LeftoverSource source) { sources_.push_back(std::move(source)); }

    AuditReport afterUnload(const std::string& moduleName, const AddressRange& range) const;
    /// When a document is closed, and at the host's end, whatever is there at all.
    AuditReport afterClose(const std::string& documentName) const;
    AuditReport atEnd() const;

private:
    AuditReport everything(const std::string& when) const;
    std::vector<Leftover> collect() const;

    std::vector<LeftoverSource> sources_;
};

} // namespace kthost
