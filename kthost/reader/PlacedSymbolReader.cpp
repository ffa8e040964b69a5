#include "kthost/reader/SchematicFields.h"

#include <optional>
#include <utility>

namespace kthost {

namespace {

constexpr double kFullTurn = 360;

void readPlacement(SexprCursor& in, PlacedSymbol& symbol) {
    symbol.position = readPoint(in, "a coordinate");
    if (const std::optional<SexprToken> angle = in.atomOrEnd()) {
        symbol.angle = in.numberOf(*angle, "an angle", -kFullTurn, kFullTurn);
    }
}

void readMirror(SexprCursor& in, PlacedSymbol& symbol) {
    while (const std::optional<SexprToken> axis = in.atomOrEnd()) {
        if (axis->text != "x" && axis->text != "y") {
            in.fail(*axis, "an axis x or y");
        }
        (axis->text == "x" ? symbol.isMirroredX : symbol.isMirroredY) = true;
    }
}

void readBodyStyle(SexprCursor& in, PlacedSymbol& symbol) {
    symbol.bodyStyle = static_cast<int>(in.integer("a body style", 1, kMaxBodyStyle));
}

constexpr SexprField<std::vector<SymbolInstance>> kProjectFields[] = {{"path", readSymbolInstance}};

constexpr SexprField<std::vector<SymbolInstance>> kInstancesFields[] = {
    {"project", [](SexprCursor& in, std::vector<SymbolInstance>& instances) {
         in.readFields<std::vector<SymbolInstance>>(instances, kProjectFields);
     }}};

constexpr SexprField<PlacedSymbol> kPlacedSymbolFields[] = {
    {"property", [](SexprCursor& in, PlacedSymbol& symbol) { readProperty(in, symbol.properties); }},
    {"lib_id", [](SexprCursor& in, PlacedSymbol& symbol) { symbol.libId = in.text("a library id"); }},
    {"lib_name",
     [](SexprCursor& in, PlacedSymbol& symbol) { symbol.libName = in.text("the name of a library symbol"); }},
    {"at", readPlacement},
    {"mirror", readMirror},
    {"unit", [](SexprCursor& in,
                PlacedSymbol& symbol) { symbol.unit = static_cast<int>(in.integer("a unit", 1, kMaxUnit)); }},
    {"convert", readBodyStyle},
    {"body_style", readBodyStyle},
    {"in_bom", [](SexprCursor& in, PlacedSymbol& symbol) { symbol.isInBom = in.yesOrNo("in_bom"); }},
    {"on_board", [](SexprCursor& in, PlacedSymbol& symbol) { symbol.isOnBoard = in.yesOrNo("on_board"); }},
    {"dnp", [](SexprCursor& in, PlacedSymbol& symbol) { symbol.isDnp = in.yesOrNo("dnp"); }},
    {"uuid", [](SexprCursor& in, PlacedSymbol& symbol) { symbol.uuid = in.text("a uuid"); }},
    {"instances",
     [](SexprCursor& in, PlacedSymbol& symbol) {
         in.readFields<std::vector<SymbolInstance>>(symbol.instances, kInstancesFields);
     }},
};

} // namespace

void readPlacedSymbol(SexprCursor& in, Schematic& schematic) {
    const std::size_t start = in.listOffset();
    PlacedSymbol symbol;
    in.readFields<PlacedSymbol>(symbol, kPlacedSymbolFields);
    if (symbol.libId.empty()) {
        in.source().fail(start, "a placed symbol with a lib_id", "one without");
    }
    schematic.symbols.push_back(std::move(symbol));
}

} // namespace kthost
