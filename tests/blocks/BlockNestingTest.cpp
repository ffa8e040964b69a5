#include "blocks/BlockNesting.h"

#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>

namespace {

/// Monitors whose containers the test itself enters.
class NestingPicture : public BlockMonitorTest {
protected:
    NestingPicture() {
        monitors_.emplace(valve_, &valveMonitor_);
        monitors_.emplace(pump_, &pumpMonitor_);
        monitors_.emplace(gate_, &gateMonitor_);
    }

    static void place(KtDxBlock& block, KtDbObjectId container) {
        block.references()->emplace(container, std::make_unique<KtDbObjectIdArray>(0, 8));
    }

    /// As it is shown now, each block as often as it comes.
    Ids inside(KtDbObjectId container) {
        nesting_.update(monitors_);
        Ids blocks;
        nesting_.forEachBlockIn(container, [&](KtDbObjectId block) { blocks.push_back(block); });
        return blocks;
    }

    KtDbObjectId pump_ = edit_.define(L"pump");
    KtDbObjectId gate_ = edit_.define(L"gate");
    KtDxBlock& valveMonitor_ = monitor(valve_);
    KtDxBlock& pumpMonitor_ = monitor(pump_);
    KtDxBlock& gateMonitor_ = monitor(gate_);
    BlockNesting::BlockMonitors monitors_;
    BlockNesting nesting_;
};

TEST_F(NestingPicture, IsCompleteWithoutMonitors) {
    EXPECT_TRUE(nesting_.isComplete());
    nesting_.update({});
    EXPECT_TRUE(nesting_.isComplete());
}

TEST_F(NestingPicture, ShowsWhatIsPlacedStraightInAContainer) {
    place(valveMonitor_, pump_);
    place(gateMonitor_, pump_);
    place(gateMonitor_, valve_);
    EXPECT_EQ(inside(pump_), (Ids{valve_, gate_}));
    EXPECT_EQ(inside(valve_), Ids{gate_});
    EXPECT_EQ(inside(gate_), Ids{});
    EXPECT_EQ(inside(kNeverHandedOut), Ids{});
    EXPECT_TRUE(nesting_.isComplete());
}

TEST_F(NestingPicture, FollowsContainersThatComeAndGo) {
    place(valveMonitor_, pump_);
    EXPECT_EQ(inside(pump_), Ids{valve_});
    place(gateMonitor_, pump_);
    EXPECT_EQ(inside(pump_), (Ids{valve_, gate_}));
    valveMonitor_.references()->clear();
    EXPECT_EQ(inside(pump_), Ids{gate_});
}

TEST_F(NestingPicture, FollowsMonitorsThatComeAndGo) {
    place(valveMonitor_, pump_);
    place(gateMonitor_, pump_); // the latest change of any container
    monitors_.erase(valve_);
    EXPECT_EQ(inside(pump_), Ids{gate_});
    monitors_.emplace(valve_, &valveMonitor_);
    EXPECT_EQ(inside(pump_), (Ids{valve_, gate_}));
    monitors_.erase(valve_);
    EXPECT_EQ(inside(pump_), Ids{gate_});
}

TEST_F(NestingPicture, ShowsABlockOnceThatSeveralKeysReach) {
    place(gateMonitor_, pump_);
    monitors_.emplace(kNeverHandedOut, &gateMonitor_);
    EXPECT_EQ(inside(pump_), Ids{gate_});
}

TEST_F(NestingPicture, EndsAtAnEmptyEntryUntilItIsFilled) {
    place(valveMonitor_, pump_);
    place(gateMonitor_, pump_);
    monitors_.insert_or_assign(gate_, nullptr);
    EXPECT_EQ(inside(pump_), Ids{valve_});
    EXPECT_FALSE(nesting_.isComplete());
    monitors_.insert_or_assign(gate_, &gateMonitor_);
    EXPECT_EQ(inside(pump_), (Ids{valve_, gate_}));
    EXPECT_TRUE(nesting_.isComplete());
}

TEST_F(NestingPicture, StaysAsItIsWhileItIsKept) {
    place(valveMonitor_, pump_);
    EXPECT_EQ(inside(pump_), Ids{valve_});
    nesting_.keep(true);
    place(gateMonitor_, pump_);
    EXPECT_EQ(inside(pump_), Ids{valve_});
    nesting_.keep(false);
    EXPECT_EQ(inside(pump_), (Ids{valve_, gate_}));
}

TEST_F(NestingPicture, WithoutMemoryIsDrawnTheNextTime) {
    place(valveMonitor_, pump_);
    place(gateMonitor_, pump_);
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        nesting_ = BlockNesting();
        monitors_.erase(valve_);
        ASSERT_EQ(inside(pump_), Ids{gate_});
        monitors_.emplace(valve_, &valveMonitor_);
        {
            const FailingAllocation none(k);
            try {
                nesting_.update(monitors_);
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(none.hasFailed());
            }
            failed = none.hasFailed();
        }
        EXPECT_EQ(inside(pump_), (Ids{valve_, gate_})) << k;
    }
}

/// A monitor that shows its references at some times only.
class ShyBlock : public KtDxBlock {
public:
    References* references() override { return isShy ? nullptr : KtDxBlock::references(); }

    bool isShy = false;
};

TEST_F(NestingPicture, WithoutMemoryIsDrawnTheNextTimeThoughAllIsAsItWasWhenItWasDrawnBefore) {
    ShyBlock shy;
    place(valveMonitor_, pump_);
    place(shy, pump_);
    monitors_.insert_or_assign(gate_, &shy);
    ASSERT_EQ(inside(pump_).size(), 2U);
    shy.isShy = true;
    place(gateMonitor_, pump_); // none of the monitors any more, so that nothing but its being shy counts
    {
        const FailingAllocation none;
        EXPECT_THROW(nesting_.update(monitors_), std::bad_alloc);
    }
    shy.isShy = false;
    place(gateMonitor_, valve_);
    EXPECT_EQ(inside(pump_).size(), 2U);
}

TEST_F(NestingPicture, IsNotDrawnAnewWhenOthersChange) {
    place(valveMonitor_, pump_);
    EXPECT_EQ(inside(pump_), Ids{valve_});
    BlockNesting::BlockMonitors others;
    others.emplace(valve_, nullptr);
    EXPECT_EQ(allocationsIn([this] { nesting_.update(monitors_); }), 0U);
}

TEST_F(NestingPicture, TakesNoMoreRoomHoweverManyContainersComeAndGo) {
    std::uint64_t container = 1000;
    const auto drawAnother = [&] {
        valveMonitor_.references()->clear();
        place(valveMonitor_, KtDbObjectId(++container));
        return allocationsIn([this] { nesting_.update(monitors_); });
    };
    drawAnother(); // makes the room that stays
    const std::size_t each = drawAnother();
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(drawAnother(), each) << container;
    }
}

} // namespace
