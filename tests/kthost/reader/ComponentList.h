#pragma once

#include "kthost/reader/Design.h"

#include <map>
#include <set>
#include <string>

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

/// By designator, without power symbols.
std::map<std::wstring, Component> componentsOf(const Design& design);

/// One line of a list of expected components, without line end.
std::string lineOf(const std::wstring& reference, const Component& component);

} // namespace kthost::test
