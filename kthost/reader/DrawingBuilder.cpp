#include "kthost/reader/DrawingBuilder.h"

#include "kthost/database/Database.h"
#include "kthost/database/References.h"
#include "kthost/reader/OccurrenceFinder.h"
#include "kthost/reader/RequireStatus.h"
#include "kthost/reader/SheetRecords.h"
#include "kthost/reader/SymbolAttributes.h"
#include "kthost/reader/SymbolRecords.h"
#include "kthost/reader/TablePlacement.h"

#include <utility>
#include <vector>

namespace kthost {

namespace {

class DrawingBuilder {
public:
    DrawingBuilder(const Design& design, Database& database)
        : design_(design),
          database_(database),
          finder_(design),
          symbols_(design, database, names_),
          sheets_(design, database, names_) {}

    void placeAll();

private:
    void placeSymbol(std::size_t file, const PlacedSymbol& symbol);
    std::vector<XDataValue> occurrences(std::size_t file, const PlacedSymbol& symbol) const;

    const Design& design_;
    Database& database_;
    OccurrenceFinder finder_;
    UniqueNames names_{UniqueNames::Case::ignored};
    SymbolRecords symbols_;
    SheetRecords sheets_;
};

void DrawingBuilder::placeAll() {
    for (std::size_t file = 0; file < design_.files.size(); ++file) {
        const Schematic& schematic = design_.files[file].schematic;
        for (const PlacedSymbol& symbol : schematic.symbols) {
            placeSymbol(file, symbol);
        }
        for (const SchematicTable& table : schematic.tables) {
            placeTable(database_, sheets_.record(file), table);
        }
    }
}

void DrawingBuilder::placeSymbol(std::size_t file, const PlacedSymbol& symbol) {
    KtDbObjectId id;
    require(insertReference(database_,
                            {symbols_.recordOf(symbol),
                             sheets_.record(file),
                             {symbol.position.x, symbol.position.y, 0},
                             symbolAttributes(symbol),
                             occurrences(file, symbol)},
                            id),
            "place a symbol");
}

std::vector<XDataValue> DrawingBuilder::occurrences(std::size_t file, const PlacedSymbol& symbol) const {
    std::vector<SymbolOccurrence> found = finder_.find(file, symbol);
    std::vector<XDataValue> values;
    values.reserve(3 * found.size());
    for (SymbolOccurrence& each : found) {
        values.push_back({KtDbXDataItem::kText, 0, sheets_.path(each.instance)});
        values.push_back({KtDbXDataItem::kText, 0, std::move(each.reference)});
        values.push_back({KtDbXDataItem::kInteger, each.unit, {}});
    }
    return values;
}

} // namespace

std::unique_ptr<Database> buildDrawing(const Design& design, std::wstring name) {
    auto database = std::make_unique<Database>(std::move(name));
    DrawingBuilder(design, *database).placeAll();
    return database;
}

} // namespace kthost
