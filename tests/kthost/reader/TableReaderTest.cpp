#include "kthost/reader/SchematicReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kthost {
namespace {

using test::bodyError;
using test::parseBody;
using testing::ElementsAre;

SchematicTable fullTable() {
    return parseBody(R"((table (column_count 2) (border (external yes)) (column_widths 10 20.5)
  (row_heights 5 6) (cells
    (table_cell "Head" (at 3 4 0) (size 30.5 5) (span 2 1) (uuid a))
    (table_cell "" (at 13 4 0) (span 0 0))
    (table_cell "a" (at 3 9 0) (span 1 1))
    (table_cell "b" (at 13 9 0)))))")
        .tables.at(0);
}

TEST(TableReader, ReadsCellsRowByRowWithTheirSpans) {
    EXPECT_THAT(fullTable().cells, ElementsAre(TableCell{L"Head", 2, 1}, TableCell{L"", 0, 0},
                                               TableCell{L"a", 1, 1}, TableCell{L"b", 1, 1}));
}

TEST(TableReader, ReadsColumnsAndRows) {
    EXPECT_EQ(fullTable().columnCount, 2);
    EXPECT_THAT(fullTable().columnWidths, ElementsAre(10, 20.5));
    EXPECT_THAT(fullTable().rowHeights, ElementsAre(5, 6));
}

TEST(TableReader, LiesWhereItsFirstCellLies) {
    EXPECT_EQ(fullTable().position, (SchematicPoint{3, 4}));
}

TEST(TableReader, RefusesATableWithoutColumns) {
    EXPECT_EQ(bodyError(" (table (cells))"),
              "t.kicad_sch:2:2: expected a table with a column_count, found one without");
}

TEST(TableReader, RefusesAColumnCountOfZero) {
    EXPECT_EQ(bodyError("(table (column_count 0))"),
              "t.kicad_sch:2:22: expected a column count from 1 to 9999, found '0'");
}

TEST(TableReader, RefusesAHalfRow) {
    EXPECT_EQ(bodyError(R"((table (column_count 2) (cells (table_cell "a"))))"),
              "t.kicad_sch:2:1: expected rows of 2 table cells, found 1 cells");
}

TEST(TableReader, RefusesASpanOutOfRange) {
    EXPECT_EQ(bodyError(R"((table (cells (table_cell "a" (span 1 -1)))))"),
              "t.kicad_sch:2:39: expected a row span from 0 to 99999, found '-1'");
}

TEST(TableReader, RefusesANegativeColumnWidth) {
    EXPECT_EQ(bodyError("(table (column_widths 1 -2))"),
              "t.kicad_sch:2:25: expected a length from 0 to 214748.3647, found '-2'");
}

} // namespace
} // namespace kthost
