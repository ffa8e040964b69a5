#include "tests/kthost/console/ConsoleFixture.h"

namespace kthost {

namespace {

using TableCommand = ConsoleTest;

TEST_F(TableCommand, DrawsAsManyCellsAsATableMayHave) {
    EXPECT_EQ(failure("table Q 1,1 100 1000"), "");
}

TEST_F(TableCommand, RefusesMoreCellsThanMemoryIsMeantFor) {
    EXPECT_EQ(failure("table Q 1,1 101 1000"), "a table has at most 100000 cells");
    EXPECT_EQ(failure("table Q 1,1 1000000 1000"), "a table has at most 100000 cells");
}

} // namespace

} // namespace kthost
