#pragma once

#include <KtDbObjectId.h>

#include "kthost/audit/Trace.h"
#include "tests/support/TempFolder.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// What passes between the module and the host, as the host's trace has it. One at a time.
class HostTrace {
public:
    HostTrace() {
        if (!kthost::openTrace(file_)) {
            throw std::runtime_error("no trace");
        }
    }

    HostTrace(const HostTrace&) = delete;
    HostTrace& operator=(const HostTrace&) = delete;

    ~HostTrace() { kthost::closeTrace(); }

    /// The calls so far that are about one of these objects, in order: "open valve notify openErased". A
    /// field that is false is not mentioned, nor is a status.
    std::vector<std::string> calls(const std::map<KtDbObjectId, std::string>& names) const;

    /// How many lines are about such an event.
    std::size_t count(const std::string& event) const;

private:
    TempFolder folder_;
    std::filesystem::path file_ = folder_ / "trace.jsonl";
};
