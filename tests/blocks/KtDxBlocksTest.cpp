#include "notify/KtDxCmdLineHook.h"
#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/HostTrace.h"

#include <KtDbBlockReference.h>

#include <memory>
#include <new>
#include <tuple>

namespace {

using kthost::HostCall;

/// Counts what it is asked and told.
class CountingBlock : public KtDxBlock {
public:
    explicit CountingBlock(int* alive = nullptr) : alive_(alive) {
        if (alive_ != nullptr) {
            ++*alive_;
        }
    }

    CountingBlock(const CountingBlock&) = delete;
    CountingBlock& operator=(const CountingBlock&) = delete;

    ~CountingBlock() override {
        if (alive_ != nullptr) {
            --*alive_;
        }
    }

    Orbx::ErrorStatus setEnabled(bool enable) override {
        ++enabled;
        return KtDxBlock::setEnabled(enable);
    }

    bool isChanged() const override {
        ++askedIfChanged;
        return KtDxBlock::isChanged();
    }

    References* references() override {
        ++askedForReferences;
        return KtDxBlock::references();
    }

    void setNeedsUpdate(bool on) override {
        updateCleared += on ? 0 : 1;
        KtDxBlock::setNeedsUpdate(on);
    }

    void setChanged(bool on) override {
        changedCleared += on ? 0 : 1;
        KtDxBlock::setChanged(on);
    }

    int enabled = 0;
    mutable int askedIfChanged = 0;
    int askedForReferences = 0;
    int updateCleared = 0;
    int changedCleared = 0;

private:
    int* alive_;
};

class BlockTableMonitor : public BlocksTest {
protected:
    /// Behind all others.
    KtDxBlock& lastBlock() {
        const KtDbObjectId id = edit_.define(L"last");
        const OpenedObject<KtDbBlockTableRecord> opened(id, KtDb::kForRead);
        KtDxBlock* block = nullptr;
        must(blocks().createBlockMonitor(block, opened.get()));
        return *block;
    }

    /// Reached by two keys, initialised for a definition "counted". Owned by the monitor.
    CountingBlock& addCounting(KtDxBlocks& blocks) {
        auto made = std::make_unique<CountingBlock>(&alive_);
        const KtDbObjectId id = edit_.define(L"counted");
        const OpenedObject<KtDbBlockTableRecord> opened(id, KtDb::kForRead);
        must(made->init(&blocks, opened.get()));
        CountingBlock& block = *made;
        blocks.addRepresentation(id, made.release());
        blocks.addRepresentation(edit_.anonymous(), &block);
        block.enabled = block.updateCleared = block.changedCleared = block.askedForReferences = 0;
        block.askedIfChanged = 0;
        return block;
    }

    bool hearsBlockTable(const KtDxBlocks& blocks) {
        const Ids heard = heardBy(&blocks);
        return heard == Ids{drawing().blockTableId()};
    }

    int alive_ = 0;
    KtDbObjectId valve_ = edit_.define(L"valve");
};

// Creation

TEST_F(BlockTableMonitor, BeginsWithARescanNeededAndNothingPending) {
    const KtDxBlocks blocks;
    EXPECT_TRUE(blocks.isRescanNeeded());
    EXPECT_FALSE(blocks.hasPendingChanges());
    EXPECT_FALSE(blocks.isEnabled());
    EXPECT_EQ(blocks.database(), nullptr);
    EXPECT_TRUE(blocks.modelSpaceId().isNull());
    EXPECT_EQ(blocks.layoutIds().growLength(), 8U);
    EXPECT_EQ(blocks.monitoredCount(), 0);
}

TEST_F(BlockTableMonitor, IsMadeScannedAndDisabled) {
    edit_.insert(valve_);
    KtDxBlocks& made = blocks();
    EXPECT_EQ(keysOf(made), (IdSet{edit_.modelSpace(), edit_.paperSpace(), valve_}));
    EXPECT_EQ(made.modelSpaceId(), edit_.modelSpace());
    EXPECT_EQ(made.database(), &drawing());
    EXPECT_FALSE(made.isEnabled());
    EXPECT_FALSE(made.isRescanNeeded());
    EXPECT_FALSE(made.hasPendingChanges());
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(BlockTableMonitor, IsMadeOnce) {
    const KtDxBlocks& first = blocks();
    EXPECT_EQ(&blocks(), &first);
}

TEST_F(BlockTableMonitor, IsMissingWithoutMemory) {
    KtDxDocument& document = record();
    KtDxBlocks* made = nullptr;
    const FailingAllocation none(1, sizeof(KtDxBlocks));
    EXPECT_EQ(KtDxBlocks::create(&document, made), Orbx::eMissing);
    EXPECT_TRUE(none.hasFailed());
    EXPECT_EQ(made, nullptr);
}

TEST_F(BlockTableMonitor, IsNotMadeForADrawingWithoutModelSpace) {
    kthost::Document& bare = host().documents().create(
        L"bare", std::make_unique<kthost::Database>(L"bare", kthost::Database::Layouts::none));
    KtDxDocument& record = *application_->getData(&bare, true);
    KtDxBlocks* made = nullptr;
    EXPECT_EQ(KtDxBlocks::create(&record, made), Orbx::eKeyNotFound);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(record.blocks(), nullptr);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(BlockTableMonitor, IsNotMadeWithoutADocument) {
    KtDxBlocks* made = record().blocks();
    EXPECT_EQ(KtDxBlocks::create(nullptr, made), Orbx::eMissing);
    EXPECT_EQ(made, nullptr);
}

TEST_F(BlockTableMonitor, IsNotMadeWithoutADrawing) {
    KtDxDocument record(&openWithoutDrawing(L"empty"));
    KtDxBlocks* made = nullptr;
    EXPECT_EQ(KtDxBlocks::create(&record, made), Orbx::eMissing);
    EXPECT_EQ(made, nullptr);
}

TEST_F(BlockTableMonitor, IsNotMadeWhenTheBlockTableWillNotOpen) {
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    KtDxBlocks* made = nullptr;
    EXPECT_EQ(KtDxBlocks::create(&record(), made), Orbx::eTooManyReaders);
    EXPECT_EQ(made, nullptr);
}

TEST_F(BlockTableMonitor, IsMadeAlthoughTheFirstScanFails) {
    faults().fail(HostCall::newTableIterator, 1, Orbx::eOutOfRange);
    KtDxBlocks* made = nullptr;
    EXPECT_EQ(KtDxBlocks::create(&record(), made), Orbx::eOk);
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->isRescanNeeded());
    delete made;
}

// Enabling

TEST_F(BlockTableMonitor, WithoutADocumentCannotBeEnabled) {
    KtDxBlocks blocks;
    EXPECT_EQ(blocks.setEnabled(true), Orbx::eMissing);
    EXPECT_FALSE(blocks.isEnabled());
}

TEST_F(BlockTableMonitor, EnabledHearsTheBlockTableAndEveryBlock) {
    EXPECT_EQ(blocks().setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(blocks().isEnabled());
    EXPECT_TRUE(hearsBlockTable(blocks()));
    EXPECT_TRUE(monitorOf(valve_)->isEnabled());
    EXPECT_EQ(record().enabledTimers().size(), 1U);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(BlockTableMonitor, EnabledTwiceChangesNothing) {
    must(blocks().setEnabled(true));
    faults().reset();
    EXPECT_EQ(blocks().setEnabled(true), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
    EXPECT_TRUE(blocks().isEnabled());
}

TEST_F(BlockTableMonitor, DisabledWhileDisabledChangesNothing) {
    KtDxBlocks& made = blocks();
    faults().reset();
    EXPECT_EQ(made.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

TEST_F(BlockTableMonitor, DisabledHearsNothing) {
    edit_.insertWithAttributes(valve_, 2);
    must(blocks().setEnabled(true));
    EXPECT_EQ(blocks().setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(blocks().isEnabled());
    EXPECT_FALSE(monitorOf(valve_)->isEnabled());
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_TRUE(record().enabledTimers().empty());
}

TEST_F(BlockTableMonitor, KeepsItsTimerForTheNextEnabling) {
    must(blocks().setEnabled(true));
    must(blocks().setEnabled(false));
    EXPECT_EQ(gTimerCount, 1U);
    must(blocks().setEnabled(true));
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_EQ(record().enabledTimers().size(), 1U);
}

TEST_F(BlockTableMonitor, StaysDisabledWhenTheBlockTableWillNotOpen) {
    KtDxBlocks& made = blocks();
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(made.setEnabled(true), Orbx::eTooManyReaders);
    EXPECT_FALSE(made.isEnabled());
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(BlockTableMonitor, StaysEnabledWhenTheBlockTableWillNotOpen) {
    must(blocks().setEnabled(true));
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(blocks().setEnabled(false), Orbx::eTooManyReaders);
    EXPECT_TRUE(blocks().isEnabled());
    EXPECT_TRUE(monitorOf(valve_)->isEnabled());
}

TEST_F(BlockTableMonitor, WithoutATimerEnablingFailsBehindTheBlockTable) {
    KtDxBlocks& made = blocks();
    {
        const FailingAllocation none(1, sizeof(KtDxTimer));
        EXPECT_EQ(made.setEnabled(true), Orbx::eMissing);
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_FALSE(made.isEnabled());
    EXPECT_TRUE(hearsBlockTable(made));
    EXPECT_TRUE(monitorOf(valve_)->isEnabled());
}

TEST_F(BlockTableMonitor, AnEnablingThatFailedHalfWayLeavesNothingBehind) {
    KtDxBlocks& made = blocks();
    {
        const FailingAllocation none(1, sizeof(KtDxTimer));
        ASSERT_EQ(made.setEnabled(true), Orbx::eMissing);
    }
    application_.reset();
    EXPECT_EQ(reactorCount(), 0U);
}

/// The host has added the reactor, and then has no memory for the trace's line about it.
TEST_F(BlockTableMonitor, AnEnablingThatAnExceptionOfTheHostEndsLeavesNothingBehind) {
    bool failed = true;
    bool isHeard = false;
    for (std::size_t k = 1; failed && !isHeard; ++k) {
        {
            KtDxBlocks made;
            must(made.attachDocument(&record()));
            const HostTrace trace;
            {
                const FailingAllocation none(k);
                try {
                    std::ignore = made.setEnabled(true);
                } catch (const std::bad_alloc&) { // which passes through
                    SUCCEED();
                }
                failed = none.hasFailed();
            }
            isHeard = hearsBlockTable(made);
        }
        ASSERT_EQ(reactorCount(), 0U) << k;
    }
    EXPECT_TRUE(isHeard);
}

TEST_F(BlockTableMonitor, ABlockThatCannotFollowDoesNotKeepTheOthers) {
    const KtDbObjectId later = edit_.define(L"later");
    KtDxBlocks& made = blocks();
    faults().fail(HostCall::openObject, 2, Orbx::eTooManyReaders); // the first behind the block table
    EXPECT_EQ(made.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(monitorOf(later)), Ids{later});
}

TEST_F(BlockTableMonitor, AnEmptyEntryIsPassedOverWhenEnabling) {
    KtDxBlocks& made = blocks();
    made.addRepresentation(KtDbObjectId(1), nullptr); // before all others
    EXPECT_EQ(made.setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(monitorOf(valve_)->isEnabled());
}

TEST_F(BlockTableMonitor, ABlockIsEnabledOnceForEachOfItsKeys) {
    CountingBlock& counting = addCounting(blocks());
    must(blocks().setEnabled(true));
    EXPECT_EQ(counting.enabled, 2);
    must(blocks().setEnabled(false));
    EXPECT_EQ(counting.enabled, 4);
}

// The marks

TEST_F(BlockTableMonitor, ABlockTableOpenedForModifyAsksForARescan) {
    must(blocks().setEnabled(true));
    ASSERT_FALSE(blocks().isRescanNeeded());
    edit_.define(L"pump");
    EXPECT_TRUE(blocks().isRescanNeeded());
}

TEST_F(BlockTableMonitor, OtherNotificationsOfTheBlockTableAreNotHandled) {
    KtDxBlocks& made = blocks();
    const OpenedObject<KtDbObject> table(drawing().blockTableId(), KtDb::kForNotify);
    made.cancelled(table.get());
    made.copied(table.get(), nullptr);
    made.erased(table.get(), true);
    made.goodbye(table.get());
    made.modified(table.get());
    made.subObjectModified(table.get(), table.get());
    made.modifyUndone(table.get());
    made.modifiedXData(table.get());
    made.unappended(table.get());
    made.reappended(table.get());
    made.objectClosed(drawing().blockTableId());
    EXPECT_FALSE(made.isRescanNeeded());
}

TEST_F(BlockTableMonitor, ClearingTheRescanClearsItInEveryBlock) {
    KtDxBlocks& made = blocks();
    monitorOf(valve_)->setNeedsUpdate(true);
    made.setRescanNeeded(false);
    EXPECT_FALSE(made.isRescanNeeded());
    EXPECT_FALSE(monitorOf(valve_)->needsUpdate());
}

TEST_F(BlockTableMonitor, ClearingPendingChangesClearsThemInEveryBlock) {
    KtDxBlocks& made = blocks();
    monitorOf(valve_)->setChanged(true);
    made.setPendingChanges(false);
    EXPECT_FALSE(made.hasPendingChanges());
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
}

TEST_F(BlockTableMonitor, SettingTheMarksTouchesNoBlock) {
    KtDxBlocks& made = blocks();
    made.setRescanNeeded(true);
    made.setPendingChanges(true);
    EXPECT_TRUE(made.isRescanNeeded());
    EXPECT_TRUE(made.hasPendingChanges());
    EXPECT_FALSE(monitorOf(valve_)->needsUpdate());
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
}

TEST_F(BlockTableMonitor, ClearingStopsAtAnEmptyEntry) {
    const KtDbObjectId between = edit_.insert(valve_); // no key
    const KtDbObjectId last = edit_.define(L"last");
    KtDxBlocks& made = blocks();
    KtDxBlock& before = *monitorOf(valve_);
    KtDxBlock& behind = *monitorOf(last);
    for (KtDxBlock* block : {&before, &behind}) {
        block->setNeedsUpdate(true);
        block->setChanged(true);
    }
    made.addRepresentation(between, nullptr);
    made.setRescanNeeded(false);
    made.setPendingChanges(false);
    EXPECT_FALSE(made.isRescanNeeded());
    EXPECT_FALSE(made.hasPendingChanges());
    EXPECT_FALSE(before.needsUpdate());
    EXPECT_FALSE(before.isChanged());
    EXPECT_TRUE(behind.needsUpdate());
    EXPECT_TRUE(behind.isChanged());
}

TEST_F(BlockTableMonitor, ABlockIsToldOnceForEachOfItsKeys) {
    CountingBlock& counting = addCounting(blocks());
    KtDxBlock& last = lastBlock();
    last.setNeedsUpdate(true);
    last.setChanged(true);
    blocks().setRescanNeeded(false);
    blocks().setPendingChanges(false);
    EXPECT_EQ(counting.updateCleared, 2);
    EXPECT_EQ(counting.changedCleared, 2);
}

TEST_F(BlockTableMonitor, NoBlockIsToldToClearWhatNoneBears) {
    CountingBlock& counting = addCounting(blocks());
    blocks().setRescanNeeded(false);
    blocks().setPendingChanges(false);
    EXPECT_EQ(counting.updateCleared, 0);
    EXPECT_EQ(counting.changedCleared, 0);
}

TEST_F(BlockTableMonitor, ABlockThatIsDestroyedBearsNoMarkAnyMore) {
    KtDxBlocks& made = blocks();
    {
        KtDxBlock block;
        const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
        must(block.init(&made, opened.get()));
        block.setNeedsUpdate(true);
        block.setChanged(true);
    }
    EXPECT_EQ(made.marks().needsUpdate, 0U);
    EXPECT_EQ(made.marks().changed, 0U);
}

TEST_F(BlockTableMonitor, ABlockIsAskedOnceForEachOfItsKeys) {
    CountingBlock& counting = addCounting(blocks());
    lastBlock().setChanged(true);
    counting.askedIfChanged = 0;
    blocks().propagateChanges();
    EXPECT_EQ(counting.askedIfChanged, 2);
    blocks().notifyBlockReferenceMonitors();
    EXPECT_EQ(counting.askedIfChanged, 4);
}

TEST_F(BlockTableMonitor, NoBlockIsAskedIfItIsChangedBehindTheLastThatIs) {
    CountingBlock& counting = addCounting(blocks());
    monitorOf(valve_)->setChanged(true);
    counting.askedIfChanged = 0;
    blocks().propagateChanges();
    EXPECT_EQ(counting.askedIfChanged, 0);
    blocks().notifyBlockReferenceMonitors();
    EXPECT_EQ(counting.askedIfChanged, 0);
}

TEST_F(BlockTableMonitor, NoBlockIsAskedIfItIsChangedWhenAnEntryIsEmpty) {
    CountingBlock& counting = addCounting(blocks());
    lastBlock().setChanged(true);
    blocks().addRepresentation(edit_.define(L"empty"), nullptr);
    counting.askedIfChanged = 0;
    blocks().propagateChanges();
    EXPECT_EQ(counting.askedIfChanged, 0);
}

TEST_F(BlockTableMonitor, WithoutBlocksHasNothingPendingOnceItHasNotified) {
    KtDxBlocks blocks;
    blocks.setPendingChanges(true);
    blocks.notifyBlockReferenceMonitors();
    EXPECT_FALSE(blocks.hasPendingChanges());
}

TEST_F(BlockTableMonitor, ABlockIsAskedForItsReferencesOnceForEachOfItsKeys) {
    CountingBlock& counting = addCounting(blocks());
    IdSet nested;
    must(blocks().collectNestedBlocks(edit_.modelSpace(), false, nested));
    EXPECT_EQ(counting.askedForReferences, 2);
}

TEST_F(BlockTableMonitor, ABlockIsNotAskedForItsReferencesAgainWhileNothingChanges) {
    CountingBlock& counting = addCounting(blocks());
    IdSet nested;
    must(blocks().collectNestedBlocks(edit_.modelSpace(), false, nested));
    counting.askedForReferences = 0;
    must(blocks().collectNestedBlocks(edit_.paperSpace(), false, nested));
    EXPECT_EQ(counting.askedForReferences, 0);
}

// Reset and destruction

TEST_F(BlockTableMonitor, ResetForgetsEverythingButTheEnabledState) {
    KtDxBlocks made;
    must(made.attachDocument(&record()));
    must(made.setEnabled(true));
    made.setPendingChanges(true);
    made.setRescanNeeded(false);
    made.reset();
    EXPECT_EQ(made.database(), nullptr);
    EXPECT_TRUE(made.modelSpaceId().isNull());
    EXPECT_EQ(made.monitoredCount(), 0);
    EXPECT_TRUE(made.blockMonitors().empty());
    EXPECT_TRUE(made.layoutIds().isEmpty());
    EXPECT_TRUE(made.isRescanNeeded());
    EXPECT_FALSE(made.hasPendingChanges());
    EXPECT_EQ(gTimerCount, 0U);
    EXPECT_TRUE(record().enabledTimers().empty());
    EXPECT_TRUE(made.isEnabled());
    EXPECT_TRUE(hearsBlockTable(made));
    EXPECT_EQ(reactorCount(), 1U);
}

TEST_F(BlockTableMonitor, ResetWhileEnabledLeavesNothingBehindInTheEnd) {
    {
        KtDxBlocks made;
        must(made.attachDocument(&record()));
        must(made.setEnabled(true));
        made.reset();
    }
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(BlockTableMonitor, MovedToAnotherDrawingWhileEnabledItLeavesNothingBehind) {
    KtDxDocument& other = *application_->getData(&open(L"other"), true);
    {
        KtDxBlocks made;
        must(made.attachDocument(&record()));
        must(made.setEnabled(true));
        must(made.attachDocument(&other));
        must(made.setEnabled(false));
        must(made.setEnabled(true));
    }
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(BlockTableMonitor, DestroysABlockOnceHoweverManyKeysReachIt) {
    KtDxBlocks& made = blocks();
    addCounting(made);
    ASSERT_EQ(alive_, 1);
    made.reset();
    EXPECT_EQ(alive_, 0);
}

TEST_F(BlockTableMonitor, DestroyedWhileEnabledLeavesNothingBehind) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.insertWithAttributes(edit_.represent(pump, L"1"), 2);
    must(blocks().setEnabled(true));
    ASSERT_GT(reactorCount(), 5U);
    application_.reset();
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_EQ(gTimerCount, 0U);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(BlockTableMonitor, AttachingAgainStartsAnew) {
    KtDxBlocks made;
    must(made.attachDocument(&record()));
    monitorIn(made, valve_)->addCallback(client_.at(0));
    must(made.attachDocument(&record()));
    EXPECT_TRUE(monitorIn(made, valve_)->callbacks()->empty());
}

TEST_F(BlockTableMonitor, AttachingNoDocumentForgetsTheOneBefore) {
    KtDxBlocks made;
    must(made.attachDocument(&record()));
    EXPECT_EQ(made.attachDocument(nullptr), Orbx::eMissing);
    EXPECT_TRUE(made.blockMonitors().empty());
    EXPECT_EQ(made.database(), nullptr);
}

} // namespace
