#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// The sheet files of one schematic in one input: one behind the other, with a line of kSheetBreak between
/// them. The first is the root; each has the name of its place.
inline constexpr std::string_view kSheetBreak = "\n===\n";

inline constexpr const char* kSheetNames[] = {"main.kicad_sch",  "a.kicad_sch",     "b.kicad_sch",
                                              "sub/c.kicad_sch", "sub/d.kicad_sch", "e.kicad_sch",
                                              "f.kicad_sch",     "g.kicad_sch"};
inline constexpr std::size_t kMostSheets = sizeof kSheetNames / sizeof kSheetNames[0];

/// Those that have a name; there is at least one.
inline std::vector<std::string_view> sheetsOf(std::string_view bundle) {
    std::vector<std::string_view> sheets;
    std::size_t at = 0;
    while (sheets.size() + 1 < kMostSheets && (at = bundle.find(kSheetBreak)) != std::string_view::npos) {
        sheets.push_back(bundle.substr(0, at));
        bundle.remove_prefix(at + kSheetBreak.size());
    }
    sheets.push_back(bundle);
    return sheets;
}
