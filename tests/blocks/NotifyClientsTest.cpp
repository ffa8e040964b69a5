#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <stdexcept>

namespace {

class Notify : public BlocksTest {
protected:
    KtDbObjectId valve_ = edit_.define(L"valve");
    KtDbObjectId pump_ = edit_.define(L"pump");
};

TEST_F(Notify, AClientIsCalledWhenAReferenceIsInserted) {
    ASSERT_TRUE(attach(0, {valve_}));
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, NobodyIsCalledInTheMiddleOfACommand) {
    ASSERT_TRUE(attach(0, {valve_}));
    command([this] {
        edit_.insert(valve_);
        EXPECT_EQ(client_.takeCalls(), Ranks{});
    });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, AClientOfAnotherBlockIsNotCalled) {
    ASSERT_TRUE(attach(0, {pump_}));
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

TEST_F(Notify, WhatHasBeenToldIsNotToldAgain) {
    ASSERT_TRUE(attach(0, {valve_}));
    command([this] { edit_.insert(valve_); });
    client_.takeCalls();
    idle();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

TEST_F(Notify, WhatWasThereWhenTheFirstClientCameIsNotTold) {
    edit_.insert(valve_);
    ASSERT_TRUE(attach(0, {valve_}));
    idle();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

TEST_F(Notify, ErasingAndRestoringAreToldAsTheReferenceIsOpenedForModify) {
    const KtDbObjectId reference = edit_.insert(valve_);
    ASSERT_TRUE(attach(0, {valve_}));
    command([&] { edit_.erase(reference); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
    command([&] { edit_.restore(reference); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, AnEditedAttributeIsTold) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    ASSERT_TRUE(attach(0, {valve_}));
    command([&] { must(kthost::setAttributeText(drawing(), reference, L"A", L"new")); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, TwoChangedBlocksOfOneClientAreOneCall) {
    ASSERT_TRUE(attach(0, {valve_, pump_}));
    command([this] {
        edit_.insert(valve_);
        edit_.insert(pump_);
    });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, ClientsAreCalledInAscendingOrderOfAddress) {
    for (const std::size_t rank : {3U, 0U, 4U, 1U, 2U}) {
        ASSERT_TRUE(attach(rank, {rank % 2 == 0 ? valve_ : pump_}));
    }
    command([this] {
        edit_.insert(pump_);
        edit_.insert(valve_);
    });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1, 2, 3, 4}));
}

TEST_F(Notify, AForcedUpdateTellsOnlyWhenAsked) {
    ASSERT_TRUE(attach(0, {valve_}));
    edit_.insert(valve_);
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, false));
    EXPECT_EQ(client_.takeCalls(), Ranks{});
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, ATickWithoutANeededRescanDoesNothingThoughAClientWaits) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    blocks().timerElapsed();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
    EXPECT_TRUE(blocks().hasPendingChanges());
    blocks().update(true, true);
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, ADisabledMonitorIsUpdatedOnlyByForce) {
    blocks().setRescanNeeded(true);
    const KtDbObjectId late = edit_.define(L"late");
    blocks().update(false, true);
    EXPECT_EQ(monitorOf(late), nullptr);
    blocks().update(true, true);
    EXPECT_NE(monitorOf(late), nullptr);
}

TEST_F(Notify, AForcedUpdateScansWithoutANeed) {
    blocks().setRescanNeeded(false);
    const KtDbObjectId late = edit_.define(L"late");
    blocks().update(true, false);
    EXPECT_NE(monitorOf(late), nullptr);
}

TEST_F(Notify, NobodyIsCalledWithoutPendingChanges) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    blocks().setPendingChanges(false);
    monitorOf(valve_)->addCallback(client_.at(0));
    blocks().notifyBlockReferenceMonitors();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

TEST_F(Notify, ClearsTheMarks) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    blocks().notifyBlockReferenceMonitors();
    EXPECT_FALSE(monitorOf(valve_)->isChanged());
    EXPECT_FALSE(blocks().hasPendingChanges());
}

TEST_F(Notify, MarksAreClearedBeforeAndChangesAreNoLongerPendingAfterTheCalls) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    client_.onCall(0, [this] {
        EXPECT_FALSE(monitorOf(valve_)->isChanged());
        EXPECT_TRUE(blocks().hasPendingChanges());
    });
    blocks().notifyBlockReferenceMonitors();
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Notify, AnEmptyEntryKeepsEverybodyFromBeingCalled) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    const KtDbObjectId last = edit_.define(L"last");
    blocks().addRepresentation(last, nullptr);
    blocks().notifyBlockReferenceMonitors();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
    EXPECT_TRUE(blocks().hasPendingChanges());
    EXPECT_TRUE(monitorOf(valve_)->isChanged());
}

TEST_F(Notify, WithoutMemoryTheNextIdleCheckTells) {
    ASSERT_TRUE(attach(0, {valve_}));
    edit_.insert(valve_);
    blocks().update(false, false);
    {
        const FailingAllocation none;
        blocks().notifyBlockReferenceMonitors();
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_EQ(client_.takeCalls(), Ranks{});
    idle();
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

// Propagation

class Propagation : public Notify {
protected:
    /// gate in valve in pump in model space; bolt beside them.
    Propagation() {
        edit_.insert(pump_);
        edit_.insert(valve_, pump_);
        edit_.insert(gate_, valve_);
        edit_.insert(bolt_);
    }

    bool changed(KtDbObjectId id) const { return monitorOf(id)->isChanged(); }

    KtDbObjectId gate_ = edit_.define(L"gate");
    KtDbObjectId bolt_ = edit_.define(L"bolt");
};

TEST_F(Propagation, ReachesEverythingUsedInsideAtAnyDepth) {
    blocks();
    monitorOf(pump_)->setChanged(true);
    blocks().propagateChanges();
    EXPECT_TRUE(changed(pump_));
    EXPECT_TRUE(changed(valve_));
    EXPECT_TRUE(changed(gate_));
    EXPECT_FALSE(changed(bolt_));
}

TEST_F(Propagation, DoesNotReachContainers) {
    blocks();
    monitorOf(gate_)->setChanged(true);
    blocks().propagateChanges();
    EXPECT_FALSE(changed(valve_));
    EXPECT_FALSE(changed(pump_));
    EXPECT_FALSE(changed(edit_.modelSpace()));
}

TEST_F(Propagation, DoesNothingWithoutPendingChanges) {
    class Forgetful : public KtDxBlocks {
    public:
        bool hasPendingChanges() const override { return false; }
    } blocks;

    must(blocks.attachDocument(&record()));
    monitorIn(blocks, pump_)->setChanged(true);
    blocks.propagateChanges();
    EXPECT_FALSE(monitorIn(blocks, valve_)->isChanged());
}

TEST_F(Propagation, KeepsChangesPending) {
    blocks();
    monitorOf(pump_)->setChanged(true);
    blocks().propagateChanges();
    EXPECT_TRUE(blocks().hasPendingChanges());
}

TEST_F(Propagation, ReachesWhatIsInsideABlockBehindAnotherOfManyKeys) {
    const KtDbObjectId dynamic = edit_.defineDynamic(L"dynamic");
    edit_.represent(dynamic, L"1");
    edit_.represent(dynamic, L"2");
    const KtDbObjectId frame = edit_.define(L"frame");
    edit_.insert(bolt_, frame);
    blocks();
    monitorOf(dynamic)->setChanged(true);
    monitorOf(frame)->setChanged(true);
    blocks().propagateChanges();
    EXPECT_TRUE(changed(bolt_));
}

TEST_F(Propagation, KeepsNoPictureOfTheNesting) {
    blocks();
    monitorOf(pump_)->setChanged(true);
    blocks().propagateChanges();
    edit_.insert(bolt_, pump_);
    must(blocks().scanBlockTable());
    IdSet nested;
    must(blocks().collectNestedBlocks(pump_, false, nested));
    EXPECT_EQ(nested, (IdSet{valve_, bolt_}));
}

TEST_F(Propagation, AnEmptyEntryMarksNothing) {
    blocks();
    monitorOf(pump_)->setChanged(true);
    const KtDbObjectId last = edit_.define(L"last");
    blocks().addRepresentation(last, nullptr);
    blocks().propagateChanges();
    EXPECT_FALSE(changed(valve_));
    EXPECT_FALSE(changed(gate_));
}

TEST_F(Propagation, WithoutMemoryRatherEverythingIsMarked) {
    blocks();
    monitorOf(pump_)->setChanged(true);
    {
        const FailingAllocation none;
        blocks().propagateChanges();
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_TRUE(changed(valve_));
    EXPECT_TRUE(changed(gate_));
    EXPECT_TRUE(changed(bolt_));
}

TEST_F(Propagation, AClientOfANestedBlockIsCalledForItsContainer) {
    ASSERT_TRUE(attach(0, {gate_}));
    command([this] { edit_.insert(pump_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(Propagation, AClientOfAContainerIsNotCalledForItsNestedBlock) {
    ASSERT_TRUE(attach(0, {pump_}));
    command([this] { edit_.insert(gate_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

// What callbacks may do

using CallbackMayDoAnything = Notify;

TEST_F(CallbackMayDoAnything, DetachItself) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {valve_}));
    client_.onCall(0, [this] { detach(0); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1}));
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{1});
}

TEST_F(CallbackMayDoAnything, DetachAnotherWhoIsStillCalledThisTime) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {valve_}));
    client_.onCall(0, [this] { detach(1); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1}));
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
}

TEST_F(CallbackMayDoAnything, DetachAll) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {valve_}));
    client_.onCall(0, [this] {
        detach(0);
        detach(1);
    });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1}));
    EXPECT_FALSE(blocks().isEnabled());
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_TRUE(record().enabledTimers().empty());
}

TEST_F(CallbackMayDoAnything, AttachAnotherWhoIsCalledFromTheNextTimeOn) {
    ASSERT_TRUE(attach(0, {valve_}));
    client_.onCall(0, [this] { EXPECT_TRUE(attach(1, {valve_})); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1}));
}

TEST_F(CallbackMayDoAnything, DetachAllAndAttachAgain) {
    ASSERT_TRUE(attach(0, {valve_}));
    client_.onCall(0, [this] {
        detach(0);
        EXPECT_TRUE(attach(0, {valve_}));
    });
    command([this] { edit_.insert(valve_); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 0}));
}

TEST_F(CallbackMayDoAnything, ForceAnUpdateWithoutCallingAnybodyTwice) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {valve_}));
    client_.onCall(0, [this] { EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true)); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1}));
    EXPECT_FALSE(blocks().hasPendingChanges());
}

TEST_F(CallbackMayDoAnything, ForceAnUpdateForWhatItHasChanged) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {pump_}));
    ASSERT_TRUE(attach(2, {valve_}));
    client_.onCall(0, [this] {
        edit_.insert(pump_);
        EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1, 2}));
}

TEST_F(CallbackMayDoAnything, ChangeTheDrawingWhichIsNotReported) {
    ASSERT_TRUE(attach(0, {valve_}));
    const KtDbObjectId reference = edit_.insert(valve_);
    client_.onCall(0, [&] { edit_.move(reference); });
    command([this] { edit_.insert(valve_); });
    EXPECT_EQ(client_.takeCalls(), Ranks{0});
    client_.onCall(0, {});
    idle();
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

TEST_F(CallbackMayDoAnything, ThrowWithoutAnybodyMissingItsCall) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {valve_}));
    ASSERT_TRUE(attach(2, {valve_}));
    client_.onCall(0, [] { throw std::runtime_error("first"); });
    client_.onCall(1, [] { throw std::runtime_error("second"); });
    edit_.insert(valve_);
    std::string thrown;
    try {
        ktdxUpdateBlockGraph(&document_, true, true);
    } catch (const std::runtime_error& error) {
        thrown = error.what();
    }
    EXPECT_EQ(thrown, "first");
    EXPECT_EQ(client_.takeCalls(), (Ranks{0, 1, 2}));
    EXPECT_FALSE(blocks().hasPendingChanges());
}

} // namespace
