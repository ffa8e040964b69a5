#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

namespace {

using CountWithoutMemory = BlocksTest;

TEST_F(CountWithoutMemory, IsZeroAndThrowsNothing) {
    const KtDbObjectId valve = edit_.define(L"valve");
    edit_.insert(valve);
    KtDxBlocks& monitor = blocks();
    ASSERT_EQ(monitor.countReferences(valve, edit_.modelSpace(), true), 1U);
    const FailingAllocation none;
    EXPECT_EQ(monitor.countReferences(valve, edit_.modelSpace(), true), 0U);
    EXPECT_TRUE(none.hasFailed());
}

} // namespace
