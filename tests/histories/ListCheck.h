#pragma once

#include "kthost/console/Session.h"
#include "tests/histories/InProcessModules.h"

#include <cstddef>
#include <set>
#include <string>

namespace histories {

/// Whether the list that the parts list client keeps of a document is what a fresh extraction gives. Asked
/// where the client has had its chance: not while it cannot read the drawing, nor for what other clients do
/// from inside the very idle check, nor when one of these has broken it off with an exception.
class ListCheck {
public:
    ListCheck(kthost::Session& session, const InProcessModules& modules)
        : session_(session),
          modules_(modules) {}

    /// To be told of every line before it runs and when it has run (`done`: it could be done).
    void beforeLine();
    void afterLine(const std::string& line, bool done);

    /// `document` has just had an idle check. Empty when all is well; otherwise what differs.
    std::string failure(kthost::Document& document);

    /// Number of lists compared so far.
    std::size_t count() const { return count_; }

private:
    bool isDue(kthost::Document& document) const;
    void doubtAll();

    kthost::Session& session_;
    const InProcessModules& modules_;
    std::set<std::wstring> doubtful_; // documents whose list nobody is called for any more
    std::size_t editsBefore_ = 0;
    std::size_t outburstsBefore_ = 0;
    bool disturbed_ = false; // by what clients did from inside their calls
    std::size_t count_ = 0;
};

} // namespace histories
