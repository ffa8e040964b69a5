#include "kthost/reader/SymbolCatalogue.h"

#include <algorithm>

namespace kthost {

SymbolCatalogue::SymbolCatalogue(const Design& design) {
    for (const SheetFile& file : design.files) {
        for (const LibSymbol& symbol : file.schematic.libSymbols) {
            add(symbol.name, symbol.unitCount, symbol.bodyStyleCount);
        }
    }
    for (const SheetFile& file : design.files) {
        for (const PlacedSymbol& symbol : file.schematic.symbols) {
            add(symbol.libEntryName(), symbol.unit, symbol.bodyStyle);
        }
    }
}

void SymbolCatalogue::add(const std::wstring& name, int unitCount, int bodyStyleCount) {
    const auto [found, isNew] = byName_.try_emplace(name, entries_.size());
    if (isNew) {
        entries_.push_back({name, 1, 1});
    }
    CatalogueEntry& entry = entries_[found->second];
    entry.unitCount = std::max(entry.unitCount, unitCount);
    entry.bodyStyleCount = std::max(entry.bodyStyleCount, bodyStyleCount);
}

} // namespace kthost
