#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kthost {

class Database;

/// Finds attributes with the tag "Reference" by their text. Built by the first question. Entries are hints:
/// edits only add to them, and a question leaves out those that do not hold any more, so undo and erasing
/// need no upkeep; when many have been added the next question builds anew.
class DesignatorIndex {
public:
    /// Said of every attribute that comes to exist or gets another text.
    void note(KtDbObjectId attribute, std::wstring_view tag, std::wstring_view text);
    /// Living references, ascending.
    std::vector<KtDbObjectId> find(const Database& database, std::wstring_view designator);

private:
    void build(const Database& database);

    std::unordered_multimap<std::wstring, KtDbObjectId> attributes_;
    std::size_t builtSize_ = 0;
    bool built_ = false;
};

} // namespace kthost
