#include "notify/KtDxTimer.h"
#include "tests/blocks/BlocksTest.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// In which order the monitors take their steps, as owners and classes derived from them see it, and what
/// they make of what these do in between.
namespace {

using kthost::HostCall;
using testing::ElementsAre;
using testing::Pair;

/// Looks each time that a block tells that it is changed.
class WatchfulOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    void setPendingChanges(bool on) override {
        QuietOwner::setPendingChanges(on);
        if (on && look) {
            look();
        }
    }

    std::function<void()> look;
};

class StepsOfAnUpdate : public BlockMonitorTest {
protected:
    StepsOfAnUpdate() {
        auto owner = std::make_unique<WatchfulOwner>(record());
        watchful_ = owner.get();
        owner_ = std::move(owner);
    }

    void release(KtDbObjectId reference) {
        edit_.erase(reference);
        edit_.release();
    }

    WatchfulOwner* watchful_ = nullptr;
};

TEST_F(StepsOfAnUpdate, EndWithTheContainersAndThenTheMark) {
    edit_.insert(valve_);
    const KtDbObjectId only = edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = monitor(valve_);
    release(only);
    block.setNeedsUpdate(true);
    std::vector<std::pair<std::size_t, bool>> seen;
    watchful_->look = [&] { seen.emplace_back(block.references()->size(), block.needsUpdate()); };
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_THAT(seen, ElementsAre(Pair(2, true), Pair(2, true))); // the reference, its container
    EXPECT_EQ(block.references()->size(), 1U);
    EXPECT_FALSE(block.needsUpdate());
}

TEST_F(StepsOfAnUpdate, TellOfAMissingReferenceBeforeTheyLetGoOfIt) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    release(reference);
    faults().reset();
    std::vector<std::uint64_t> opened;
    watchful_->look = [&] { opened.push_back(faults().calls(HostCall::openObject)); };
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_THAT(opened, ElementsAre(1, 2)); // the record; the reference, before its container goes
}

TEST_F(StepsOfAnUpdate, TellOfANewContainerBeforeTheyMakeIt) {
    KtDxBlock& block = monitor(valve_);
    edit_.insert(valve_);
    std::vector<std::size_t> containers;
    watchful_->look = [&] { containers.push_back(block.references()->size()); };
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_THAT(containers, ElementsAre(0, 0)); // the reference, its container
    EXPECT_EQ(block.references()->size(), 1U);
}

TEST_F(StepsOfAnUpdate, TellOfNothingElseWhenTheFirstReferenceIsMissing) {
    const KtDbObjectId goes = edit_.insert(valve_);
    const Ids stay{edit_.insert(valve_), edit_.insert(valve_)};
    KtDxBlock& block = enabledMonitor(valve_);
    release(goes);
    int told = 0;
    watchful_->look = [&] { ++told; };
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), stay}}));
    EXPECT_EQ(heardBy(&block), (Ids{valve_, stay[0], stay[1]}));
}

TEST_F(StepsOfAnUpdate, DropAContainerWhoseArrayIsTakenAwayInBetween) {
    const KtDbObjectId goes = edit_.insert(valve_);
    const KtDbObjectId stays = edit_.insert(valve_);
    edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = monitor(valve_);
    release(goes);
    watchful_->look = [&] { block.references()->at(edit_.paperSpace()) = nullptr; };
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {stays}}}));
}

/// Looks at itself before it is enabled or disabled.
class WatchfulBlock : public KtDxBlock {
public:
    Orbx::ErrorStatus setEnabled(bool enable) override {
        wasChanged = isChanged();
        return KtDxBlock::setEnabled(enable);
    }

    bool wasChanged = false;
};

TEST_F(StepsOfAnUpdate, ThatLoseAnArrayAtTheirEndAreFollowedByOneThatMissesIt) {
    edit_.insert(valve_);
    const KtDbObjectId goes = edit_.insert(valve_);
    const KtDbObjectId only = edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = monitor(valve_);
    release(only);
    int told = 0;
    watchful_->look = [&] {
        if (++told == 2) { // its container is about to be dropped
            block.references()->at(edit_.modelSpace()) = nullptr;
        }
    };
    must(block.refresh());
    watchful_->look = nullptr;
    release(goes);
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
}

TEST_F(StepsOfAnUpdate, OfAResetBeginWithDisabling) {
    WatchfulBlock block;
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    must(block.init(owner_.get(), opened.get()));
    block.setChanged(true);
    block.reset();
    EXPECT_TRUE(block.wasChanged);
    EXPECT_FALSE(block.isChanged());
}

/// Does something when it is asked for its callbacks, whether it is changed, or to forget a callback, when it
/// is marked, and at its end.
class MeddlingBlock : public KtDxBlock {
public:
    MeddlingBlock() = default;
    MeddlingBlock(const MeddlingBlock&) = delete;
    MeddlingBlock& operator=(const MeddlingBlock&) = delete;

    ~MeddlingBlock() override {
        if (atEnd) {
            atEnd();
        }
    }

    bool isChanged() const override {
        if (whenAsked) {
            whenAsked();
        }
        return KtDxBlock::isChanged();
    }

    KtDxCallbackSet* callbacks() override {
        wasChanged = KtDxBlock::isChanged();
        return KtDxBlock::callbacks();
    }

    void removeCallback(KtRxCallback callback) override {
        ++removals;
        KtDxBlock::removeCallback(callback);
    }

    void setChanged(bool on) override {
        KtDxBlock::setChanged(on);
        if (on && whenMarked) {
            whenMarked();
        }
    }

    std::function<void()> atEnd;
    std::function<void()> whenAsked;
    std::function<void()> whenMarked;
    bool wasChanged = false;
    int removals = 0;
};

/// Monitors of a drawing with a block among them that nobody else would make.
class StepsOfATable : public BlocksTest {
protected:
    /// Its key owns it.
    MeddlingBlock& meddler(KtDxBlocks& blocks) {
        auto* block = new MeddlingBlock;
        blocks.addRepresentation(meddler_, block);
        return *block;
    }

    KtDbObjectId meddler_ = kNeverHandedOut; // comes before all others
    KtDbObjectId pump_ = edit_.define(L"pump");
    KtDbObjectId valve_ = edit_.define(L"valve");
};

TEST_F(StepsOfATable, ThatNotifiesClearTheMarkAndThenGatherTheCallbacks) {
    MeddlingBlock& block = meddler(blocks());
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    must(block.init(&blocks(), opened.get()));
    block.setChanged(true);
    block.wasChanged = true;
    blocks().notifyBlockReferenceMonitors();
    EXPECT_FALSE(block.wasChanged);
}

TEST_F(StepsOfATable, ThatDetachesNoCallbackAskNoBlock) {
    const MeddlingBlock& block = meddler(blocks());
    blocks().detachBlockReferenceMonitor(nullptr);
    EXPECT_EQ(block.removals, 0);
}

TEST_F(StepsOfATable, ThatPropagatesEndAtAnEntryThatIsEmptiedOnTheWay) {
    edit_.insert(valve_, pump_);
    must(blocks().scanBlockTable());
    const KtDbObjectId last = edit_.define(L"last");
    blocks().setPendingChanges(false);
    monitorOf(pump_)->setChanged(true);
    meddler(blocks()).whenAsked = [&] { blocks().addRepresentation(last, nullptr); };
    blocks().propagateChanges();
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
}

TEST_F(StepsOfATable, ThatMarkWhatIsInsideEndAtAnEntryThatIsEmptiedOnTheWay) {
    const KtDbObjectId first = edit_.define(L"first");
    KtDxBlocks& table = blocks(); // which knows the first, and not the others
    const KtDbObjectId meddling = edit_.define(L"meddling");
    auto* block = new MeddlingBlock; // its key owns it
    {
        const OpenedObject<KtDbBlockTableRecord> opened(meddling, KtDb::kForRead);
        must(block->init(&table, opened.get()));
    }
    table.addRepresentation(meddling, block);
    const KtDbObjectId emptied = edit_.define(L"emptied");
    const KtDbObjectId last = edit_.define(L"last");
    for (const KtDbObjectId inside : {meddling, emptied, last}) {
        edit_.insert(inside, first);
    }
    must(table.scanBlockTable());
    table.setPendingChanges(false);
    monitorOf(first)->setChanged(true);
    block->whenMarked = [&] {
        const std::unique_ptr<KtDxBlock> gone(monitorOf(emptied));
        table.forgetRepresentations(gone.get());
        table.addRepresentation(emptied, nullptr);
    };
    table.propagateChanges();
    block->whenMarked = nullptr;
    EXPECT_TRUE(block->isChanged());
    EXPECT_FALSE(monitorOf(last)->isChanged());
}

TEST_F(StepsOfATable, ThatPropagatesEndAtAnEntryThatIsEmptiedBeforeAChangedBlock) {
    edit_.insert(valve_, pump_);
    const KtDbObjectId emptied = edit_.insert(pump_); // no key yet
    const KtDbObjectId last = edit_.define(L"last");
    must(blocks().scanBlockTable());
    blocks().setPendingChanges(false);
    monitorOf(pump_)->setChanged(true);
    monitorOf(last)->setChanged(true);
    meddler(blocks()).whenAsked = [&] { blocks().addRepresentation(emptied, nullptr); };
    blocks().propagateChanges();
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
}

TEST_F(StepsOfATable, ThatPropagatesLookAtTheNestingOnce) {
    must(blocks().scanBlockTable());
    monitorOf(pump_)->setChanged(true);
    meddler(blocks()).whenAsked = [&] {
        monitorOf(valve_)->references()->emplace(pump_, std::make_unique<KtDbObjectIdArray>());
    };
    blocks().propagateChanges();
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
}

/// Notes its steps.
class NotingBlocks : public KtDxBlocks {
public:
    void setRescanNeeded(bool on) override {
        steps.push_back((on ? "rescan, " : "no rescan, ") + seen());
        KtDxBlocks::setRescanNeeded(on);
    }

    void setPendingChanges(bool on) override {
        steps.push_back((on ? "changes, " : "no changes, ") + seen());
        KtDxBlocks::setPendingChanges(on);
    }

    /// What there is at that moment.
    std::string seen() const {
        return std::to_string(blockMonitors().size()) + " blocks, " + std::to_string(layoutIds().length()) +
               " layouts, " + std::to_string(gTimerCount) + " timers";
    }

    std::vector<std::string> steps;
};

TEST_F(StepsOfATable, OfAResetAreTheBlocksTheLayoutsTheMarksTheTimer) {
    NotingBlocks made;
    must(made.attachDocument(&record()));
    must(made.setEnabled(true));
    meddler(made).atEnd = [&] { made.steps.push_back("end, " + made.seen()); };
    made.steps.clear();
    made.reset();
    EXPECT_THAT(made.steps,
                ElementsAre("end, 0 blocks, 2 layouts, 1 timers", "rescan, 0 blocks, 0 layouts, 1 timers",
                            "no changes, 0 blocks, 0 layouts, 1 timers"));
    EXPECT_EQ(gTimerCount, 0U);
}

} // namespace
