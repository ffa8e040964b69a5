#include "kthost/reader/SchematicFields.h"

#include <optional>
#include <utility>

namespace kthost {

namespace {

constexpr int kMaxColumns = 9999;
constexpr int kMaxSpan = 99999;

void readLengths(SexprCursor& in, std::vector<double>& lengths) {
    while (const std::optional<SexprToken> token = in.atomOrEnd()) {
        lengths.push_back(in.numberOf(*token, "a length", 0, kMaxCoordinate));
    }
}

struct PlacedCell {
    TableCell cell;
    SchematicPoint position;
};

constexpr SexprField<PlacedCell> kCellFields[] = {
    {"at", [](SexprCursor& in, PlacedCell& cell) { cell.position = readPoint(in, "a coordinate"); }},
    {"span",
     [](SexprCursor& in, PlacedCell& cell) {
         cell.cell.columnSpan = static_cast<int>(in.integer("a column span", 0, kMaxSpan));
         cell.cell.rowSpan = static_cast<int>(in.integer("a row span", 0, kMaxSpan));
     }},
};

void readCell(SexprCursor& in, SchematicTable& table) {
    PlacedCell placed;
    placed.cell.text = in.text("the text of a table cell");
    in.readFields<PlacedCell>(placed, kCellFields);
    if (table.cells.empty()) {
        table.position = placed.position;
    }
    table.cells.push_back(std::move(placed.cell));
}

constexpr SexprField<SchematicTable> kCellsFields[] = {{"table_cell", readCell}};

constexpr SexprField<SchematicTable> kTableFields[] = {
    {"column_count",
     [](SexprCursor& in, SchematicTable& table) {
         table.columnCount = static_cast<int>(in.integer("a column count", 1, kMaxColumns));
     }},
    {"column_widths", [](SexprCursor& in, SchematicTable& table) { readLengths(in, table.columnWidths); }},
    {"row_heights", [](SexprCursor& in, SchematicTable& table) { readLengths(in, table.rowHeights); }},
    {"cells",
     [](SexprCursor& in, SchematicTable& table) { in.readFields<SchematicTable>(table, kCellsFields); }},
};

} // namespace

void readTable(SexprCursor& in, Schematic& schematic) {
    const std::size_t start = in.listOffset();
    SchematicTable table;
    in.readFields<SchematicTable>(table, kTableFields);
    if (table.columnCount == 0) {
        in.source().fail(start, "a table with a column_count", "one without");
    }
    if (table.cells.size() % static_cast<std::size_t>(table.columnCount) != 0) {
        in.source().fail(start, "rows of " + std::to_string(table.columnCount) + " table cells",
                         std::to_string(table.cells.size()) + " cells");
    }
    schematic.tables.push_back(std::move(table));
}

} // namespace kthost
