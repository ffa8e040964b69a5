#include "kthost/reader/SymbolRecords.h"

#include "kthost/database/Database.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/reader/RequireStatus.h"
#include "kthost/reader/UnitLabel.h"

namespace kthost {

SymbolRecords::SymbolRecords(const Design& design, Database& database, UniqueNames& names)
    : database_(&database),
      catalogue_(design) {
    definitions_.reserve(catalogue_.entries().size());
    for (const CatalogueEntry& entry : catalogue_.entries()) {
        addDefinition(entry, names);
    }
}

void SymbolRecords::addDefinition(const CatalogueEntry& entry, UniqueNames& names) {
    KtDbObjectId& definition = definitions_.emplace_back();
    const std::wstring name = names.take(recordNameText(entry.name));
    require(kthost::addDefinition(*database_, name, definition), "add the record of a library symbol");
    if (entry.isDynamic()) {
        require(makeDynamic(*database_, definition), "make a definition dynamic");
    }
}

KtDbObjectId SymbolRecords::recordOf(const PlacedSymbol& symbol) {
    const std::size_t entry = catalogue_.find(symbol);
    return catalogue_.entries()[entry].isDynamic() ? representationOf(entry, symbol.unit, symbol.bodyStyle)
                                                   : definitions_[entry];
}

KtDbObjectId SymbolRecords::representationOf(std::size_t entry, int unit, int bodyStyle) {
    KtDbObjectId& record = representations_[{entry, unit, bodyStyle}];
    if (record.isNull()) {
        require(addRepresentation(*database_, definitions_[entry], unitLabel(unit, bodyStyle), record),
                "add the record of a unit");
    }
    return record;
}

} // namespace kthost
