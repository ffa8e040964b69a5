#pragma once

#include "kthost/reader/SymbolCatalogue.h"
#include "kthost/reader/UniqueNames.h"

#include <KtDbObjectId.h>

#include <map>
#include <tuple>
#include <vector>

namespace kthost {

class Database;

/// The block table records of a design's library symbols: one for each name, and for a symbol of several
/// units or body styles, which is a dynamic definition, an anonymous one for each unit and style that is
/// asked for.
class SymbolRecords {
public:
    /// Adds the named records. `design` and `database` must outlive this.
    SymbolRecords(const Design& design, Database& database, UniqueNames& names);

    /// The record that a reference for the placed symbol refers to.
    KtDbObjectId recordOf(const PlacedSymbol& symbol);

private:
    void addDefinition(const CatalogueEntry& entry, UniqueNames& names);
    KtDbObjectId representationOf(std::size_t entry, int unit, int bodyStyle);

    Database* database_;
    SymbolCatalogue catalogue_;
    std::vector<KtDbObjectId> definitions_; // parallel to the catalogue's entries
    std::map<std::tuple<std::size_t, int, int>, KtDbObjectId> representations_;
};

} // namespace kthost
