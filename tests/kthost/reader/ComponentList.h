#pragma once

#include "kthost/reader/Design.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kthost::test {

/// What a bill of materials counts as one part.
struct Component {
    std::wstring value;
    std::wstring footprint;
    std::wstring libId;
    std::set<int> units;
    bool isInBom = true;
    bool isOnBoard = true;
    bool isDnp = false;
    std::set<std::wstring> sheets;
};

using ComponentMap = std::map<std::wstring, Component>; ///< by designator

/// Without power symbols.
ComponentMap componentsOf(const Design& design);

/// A line each, as a list of expected components has it, without line end.
std::vector<std::string> linesOf(const ComponentMap& components);

} // namespace kthost::test
