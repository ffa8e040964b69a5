#include "kthost/reader/TablePlacement.h"

#include "kthost/database/Database.h"
#include "kthost/reader/RequireStatus.h"

#include <KtDbTable.h>

#include <cstddef>
#include <cstdint>

namespace kthost {

namespace {

void fill(KtDbTable& drawn, const SchematicTable& table) {
    const auto columns = static_cast<std::size_t>(table.columnCount);
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
        require(drawn.setCell(static_cast<std::uint32_t>(i / columns),
                              static_cast<std::uint32_t>(i % columns), table.cells[i].text.c_str()),
                "fill a table cell");
    }
}

} // namespace

void placeTable(Database& database, KtDbObjectId container, const SchematicTable& table) {
    const auto columns = static_cast<std::uint32_t>(table.columnCount);
    const auto rows = static_cast<std::uint32_t>(table.cells.size()) / columns;
    KtDbObjectId id;
    require(ktdbCreateTable(&database, container, {table.position.x, table.position.y, 0}, rows, columns, id),
            "draw a table");
    KtDbTable* drawn = nullptr;
    require(ktdbOpenObject(drawn, id, KtDb::kForWrite), "open a table");
    fill(*drawn, table);
    require(drawn->close(), "close a table");
}

} // namespace kthost
