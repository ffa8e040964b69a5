#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kthost {

/// What all lib_symbols entries of one name, and the symbols placed from them, have together.
struct CatalogueEntry {
    std::wstring name;
    int unitCount = 1;
    int bodyStyleCount = 1;

    bool isDynamic() const noexcept { return unitCount > 1 || bodyStyleCount > 1; }
};

/// The library symbols of a design. Each sheet file brings entries of its own; equal names are one symbol,
/// even where the entries differ because the library changed between two saves: it then has the units and
/// styles of all of them. A placed symbol whose entry is missing, or has not its unit, brings what it needs.
class SymbolCatalogue {
public:
    /// `design` must outlive the catalogue.
    explicit SymbolCatalogue(const Design& design);

    /// In the order in which the names first appear.
    const std::vector<CatalogueEntry>& entries() const noexcept { return entries_; }

    /// Index of the entry that a placed symbol of the design uses.
    std::size_t find(const PlacedSymbol& symbol) const { return byName_.at(symbol.libEntryName()); }

private:
    void add(const std::wstring& name, int unitCount, int bodyStyleCount);

    std::vector<CatalogueEntry> entries_;
    std::unordered_map<std::wstring_view, std::size_t> byName_;
};

} // namespace kthost
