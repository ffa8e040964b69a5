#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kthost {

/// A placed symbol in one place of the hierarchy.
struct SymbolOccurrence {
    std::size_t instance = 0; ///< index into Design::instances
    std::wstring reference;
    int unit = 1;

    bool operator==(const SymbolOccurrence&) const = default;
};

/// Tells what a placed symbol is called in each place of the hierarchy. Only the path of uuids decides: the
/// names of projects in the files are often empty, or left over. Where a path stands twice, the later entry
/// counts; paths that lead nowhere in this design are ignored; where no entry fits, the symbol's own
/// Reference property and unit hold. Answering costs time in proportion to the symbol's entries and places.
class OccurrenceFinder {
public:
    /// `design` must outlive the finder and stay unchanged.
    explicit OccurrenceFinder(const Design& design);

    /// One for each place of the file, in the order of Design::instances.
    std::vector<SymbolOccurrence> find(std::size_t file, const PlacedSymbol& symbol) const;

private:
    using InstanceByPath = std::unordered_map<std::wstring_view, const SymbolInstance*>;

    static InstanceByPath indexByPath(const std::vector<SymbolInstance>& instances);
    const SymbolInstance* findInRoot(const SheetInstance& place, const PlacedSymbol& symbol) const;

    const Design* design_;
    std::vector<std::vector<std::size_t>> placesOfFile_;
    InstanceByPath rootInstances_;
};

} // namespace kthost
