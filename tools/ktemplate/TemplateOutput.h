#pragma once

#include "legacy/CEattMain.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace ktemplate {

/// A template for people: one line a block and one an attribute, each with a mark that shows whether it is
/// selected.
void printForPeople(const CEattMain& contents, std::ostream& out);

/// A template as the JSON that templates are made from.
void printJson(const CEattMain& contents, std::ostream& out);

/// The two lists of a client as JSON.
void printLists(const std::vector<std::wstring>& blockNames, const std::vector<std::wstring>& attributeTags,
                std::ostream& out);

} // namespace ktemplate
