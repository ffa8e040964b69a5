#include "kthost/console/TableCommand.h"

#include <KtDbTable.h>

#include "kthost/console/CommandError.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"

#include <cstdint>
#include <string>

namespace kthost {

namespace {

constexpr std::uint32_t kMostRows = 1'000'000;
constexpr std::uint32_t kMostColumns = 1'000;

/// Every cell takes memory, so a short line must not ask for a thousand million.
constexpr std::uint32_t kMostCells = 100'000;

} // namespace

void runTable(Session& session, Words& words) {
    const std::wstring name = words.take("NAME");
    const KtGePoint3d position = words.takePoint();
    const std::uint32_t rows = words.takeNumber("ROWS", 1, kMostRows);
    const std::uint32_t columns = words.takeNumber("COLS", 1, kMostColumns);
    if (rows > kMostCells / columns) {
        throw CommandError("a table has at most " + std::to_string(kMostCells) + " cells");
    }
    const KtDbObjectId container =
        words.takeIf(L"in") ? session.block(words.take("CONTAINER")) : session.drawing().modelSpaceId();
    words.expectEnd();
    KtDbObjectId table;
    session.edit(L"table", [&](Database& database) {
        require(ktdbCreateTable(&database, container, position, rows, columns, table),
                "the table cannot be drawn");
        KtDbObjectId attribute;
        require(appendAttribute(database, table, L"Name", name, attribute), "the table cannot be named");
    });
    session.remember(table);
    session.say("drew table " + handleText(handleOf(table)) + ", " + blockName(table));
}

} // namespace kthost
