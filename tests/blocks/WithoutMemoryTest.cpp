#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

/// Monitors that get no memory where they can do without it, or have to say so.
namespace {

using WithoutMemory = BlockMonitorTest;

TEST_F(WithoutMemory, ToSortReferencesEnablingHearsAndRecordsThemAll) {
    const KtDbObjectId inPaper = edit_.insertWithAttributes(valve_, 1, edit_.paperSpace());
    const KtDbObjectId inModel = edit_.insertWithAttributes(valve_, 1);
    const KtDbObjectId bare = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    {
        const FailingAllocation none;
        EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_EQ(block.attributesByReference().size(), 2U);
    EXPECT_FALSE(block.attributesByReference().contains(bare));
    for (const KtDbObjectId reference : {inPaper, inModel}) {
        EXPECT_EQ(toIds(block.attributesByReference().at(reference)), DrawingEditor::attributesOf(reference));
    }
    EXPECT_EQ(heardBy(&block).size(), 6U);
}

/// A second time too, when it remembers what a broken-off rescan has not come to.
TEST_F(WithoutMemory, FromAnyPointOnARescanLeavesNothingBehindInTheEnd) {
    for (int i = 0; i < 6; ++i) {
        edit_.insertWithAttributes(valve_, 1);
    }
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        owner_ = std::make_unique<QuietOwner>(record());
        KtDxBlock& block = enabledMonitor(valve_);
        const KtDbObjectId fresh = edit_.insertWithAttributes(valve_, 1, edit_.paperSpace());
        {
            const FailingFiltered none([](const void*) { return true; }, k, true);
            const Orbx::ErrorStatus status = block.refresh();
            failed = FailingFiltered::count() >= k;
            EXPECT_TRUE(status == Orbx::eOk || (status == Orbx::eMissing && failed)) << k;
        }
        owner_->reset();
        ASSERT_EQ(reactorCount(), 0U) << k;
        edit_.erase(fresh);
        edit_.release();
    }
}

TEST_F(WithoutMemory, ForWhatAScanKeepsOfAllBlocksItSaysSo) {
    bool failed = true;
    int refused = 0;
    for (std::size_t k = 1; failed; ++k) {
        QuietOwner owner(record());
        const FailingAllocation none(k);
        const Orbx::ErrorStatus status = owner.KtDxBlocks::scanBlockTable();
        failed = none.hasFailed();
        EXPECT_TRUE(status == Orbx::eOk || (status == Orbx::eMissing && failed)) << k;
        EXPECT_EQ(status == Orbx::eOk, !owner.isRescanNeeded()) << k;
        refused += status == Orbx::eMissing ? 1 : 0;
    }
    EXPECT_GE(refused, 1); // for the layouts at least
}

} // namespace
