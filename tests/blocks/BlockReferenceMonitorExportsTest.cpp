#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

namespace {

using kthost::HostCall;

class MonitorExports : public BlocksTest {
protected:
    bool hasRecord() const { return application_->getData(&document_, false) != nullptr; }

    std::size_t heldCallbacks() const { return host().callbacks().size(); }

    KtDbObjectId valve_ = edit_.define(L"valve");
    KtDbObjectId pump_ = edit_.define(L"pump");
};

using AttachExport = MonitorExports;

TEST_F(AttachExport, RefusesNullArgumentsAndAnEmptyArray) {
    const KtArray<KtDbObjectId> ids{valve_};
    const KtArray<KtDbObjectId> none;
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(nullptr, &ids, client_.at(0)));
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(&document_, nullptr, client_.at(0)));
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(&document_, &none, client_.at(0)));
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(&document_, &ids, nullptr));
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(AttachExport, FailsWithoutAnApplication) {
    application_.reset();
    EXPECT_FALSE(attach(0, {valve_}));
}

TEST_F(AttachExport, FailsForADocumentWithoutADrawing) {
    const KtArray<KtDbObjectId> ids{valve_};
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(&openWithoutDrawing(L"empty"), &ids, client_.at(0)));
}

TEST_F(AttachExport, FailsForADrawingWithoutModelSpace) {
    kthost::Document& bare = host().documents().create(
        L"bare", std::make_unique<kthost::Database>(L"bare", kthost::Database::Layouts::none));
    const KtArray<KtDbObjectId> ids{valve_};
    EXPECT_FALSE(ktdxBlockReferenceMonitorAttach(&bare, &ids, client_.at(0)));
}

TEST_F(AttachExport, FailsWhenTheMonitorCannotBeEnabled) {
    blocks();
    faults().fail(HostCall::newTableIterator, 1, Orbx::eOutOfRange); // ends the scan behind one open
    faults().fail(HostCall::openObject, 2, Orbx::eTooManyReaders);
    EXPECT_FALSE(attach(0, {valve_}));
    EXPECT_FALSE(blocks().isEnabled());
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->empty());
}

TEST_F(AttachExport, EnablesTheMonitorAndHoldsTheCallback) {
    EXPECT_TRUE(attach(0, {valve_}));
    EXPECT_TRUE(blocks().isEnabled());
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(0)));
    EXPECT_TRUE(monitorOf(pump_)->callbacks()->empty());
}

TEST_F(AttachExport, MakesTheRecordOfADocument) {
    application_->removeData(&document_);
    EXPECT_TRUE(attach(0, {valve_}));
    EXPECT_TRUE(hasRecord());
}

TEST_F(AttachExport, OfTheFirstScansAndReportsNothingOfIt) {
    blocks();
    const KtDbObjectId late = edit_.define(L"late");
    edit_.insert(late);
    EXPECT_TRUE(attach(0, {late}));
    EXPECT_TRUE(monitorOf(late)->callbacks()->contains(client_.at(0)));
    EXPECT_FALSE(blocks().hasPendingChanges());
    EXPECT_FALSE(monitorOf(late)->isChanged());
}

TEST_F(AttachExport, OfAnotherDoesNotScan) {
    ASSERT_TRUE(attach(0, {valve_}));
    const KtDbObjectId late = edit_.define(L"late");
    EXPECT_TRUE(attach(1, {late}));
    EXPECT_EQ(monitorOf(late), nullptr);
}

TEST_F(AttachExport, OfAnotherKeepsPendingChanges) {
    ASSERT_TRUE(attach(0, {valve_}));
    monitorOf(valve_)->setChanged(true);
    EXPECT_TRUE(attach(1, {pump_}));
    EXPECT_TRUE(blocks().hasPendingChanges());
}

TEST_F(AttachExport, OfBlocksThatAreNotMonitoredSucceedsAndEnables) {
    EXPECT_TRUE(attach(0, {kNeverHandedOut}));
    EXPECT_TRUE(blocks().isEnabled());
    KtDxCallbackSet callbacks;
    ASSERT_EQ(blocks().collectBlockReferenceMonitors(callbacks), Orbx::eOk);
    EXPECT_TRUE(callbacks.empty());
    detach(1);
    EXPECT_FALSE(blocks().isEnabled());
}

TEST_F(AttachExport, PassesOverBlocksThatAreNotMonitored) {
    EXPECT_TRUE(attach(0, {kNeverHandedOut, valve_}));
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(0)));
}

TEST_F(AttachExport, StopsAtAnEmptyEntryAndKeepsWhatWasAttachedBefore) {
    ASSERT_TRUE(attach(0, {valve_}));
    const KtDbObjectId empty = edit_.define(L"empty");
    blocks().addRepresentation(empty, nullptr);
    EXPECT_FALSE(attach(1, {valve_, empty, pump_}));
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(1)));
    EXPECT_FALSE(monitorOf(pump_)->callbacks()->contains(client_.at(1)));
}

TEST_F(AttachExport, ThroughARepresentationReachesItsDefinition) {
    const KtDbObjectId dynamic = edit_.defineDynamic(L"dynamic");
    const KtDbObjectId first = edit_.represent(dynamic, L"1");
    EXPECT_TRUE(attach(0, {first}));
    EXPECT_TRUE(monitorOf(dynamic)->callbacks()->contains(client_.at(0)));
}

TEST_F(AttachExport, TwiceIsHeldOnce) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(0, {valve_, pump_}));
    EXPECT_EQ(monitorOf(valve_)->callbacks()->size(), 1U);
    EXPECT_EQ(heldCallbacks(), 1U);
    detach(0);
    EXPECT_EQ(heldCallbacks(), 0U);
}

TEST_F(AttachExport, WithoutMemoryLeavesNothingBehind) {
    const KtDbObjectId dynamic = edit_.defineDynamic(L"dynamic");
    edit_.insertWithAttributes(edit_.represent(dynamic, L"1"), 2);
    edit_.insertWithAttributes(valve_, 12);
    const KtArray<KtDbObjectId> ids{valve_, pump_};
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        {
            const FailingAllocation none(k);
            try {
                ktdxBlockReferenceMonitorAttach(&document_, &ids, client_.at(0));
            } catch (const std::bad_alloc&) { // the host's own, which passes through
                SUCCEED();
            }
            failed = none.hasFailed();
        }
        application_.reset();
        ASSERT_EQ(reactorCount(), 0U) << k;
        ASSERT_EQ(openCount(), 0U) << k;
        application_ = std::make_unique<KtDxApplication>();
    }
}

TEST_F(AttachExport, DoesNotThrowForWantOfItsOwnMemory) {
    edit_.insertWithAttributes(valve_, 12);
    const KtArray<KtDbObjectId> ids{valve_, pump_};
    const auto startAfresh = [this] {
        application_.reset();
        application_ = std::make_unique<KtDxApplication>();
    };
    // Once with all the memory there is: the host makes its class records when they are first asked for.
    ASSERT_TRUE(ktdxBlockReferenceMonitorAttach(&document_, &ids, client_.at(0)));
    startAfresh();
    // The ids of one reference's attributes, at first and when there are more than eight. Their array keeps
    // the length of its room in front of them.
    for (const std::size_t size : {9 * sizeof(KtDbObjectId), 17 * sizeof(KtDbObjectId)}) {
        bool failed = true;
        std::size_t k = 0;
        while (failed) {
            const FailingAllocation none(++k, size);
            EXPECT_NO_THROW(ktdxBlockReferenceMonitorAttach(&document_, &ids, client_.at(0))) << k;
            failed = none.hasFailed();
            startAfresh();
        }
        EXPECT_GT(k, 1U);
    }
}

using AttachOperation = MonitorExports;

TEST_F(AttachOperation, WithoutACallbackIsMissing) {
    const KtArray<KtDbObjectId> ids{valve_};
    EXPECT_EQ(blocks().attachBlockReferenceMonitor(nullptr, ids), Orbx::eMissing);
}

TEST_F(AttachOperation, WithoutIdsDoesNothing) {
    EXPECT_EQ(blocks().attachBlockReferenceMonitor(client_.at(0), {}), Orbx::eOk);
}

TEST_F(AttachOperation, WithoutMemoryIsMissing) {
    const KtArray<KtDbObjectId> ids{valve_};
    KtDxBlocks& made = blocks();
    const FailingAllocation none;
    EXPECT_EQ(made.attachBlockReferenceMonitor(client_.at(0), ids), Orbx::eMissing);
}

using CollectOperation = MonitorExports;

TEST_F(CollectOperation, GathersTheCallbacksOfAllBlocks) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {pump_, valve_}));
    KtDxCallbackSet callbacks{client_.at(2)};
    EXPECT_EQ(blocks().collectBlockReferenceMonitors(callbacks), Orbx::eOk);
    EXPECT_EQ(callbacks, (KtDxCallbackSet{client_.at(0), client_.at(1), client_.at(2)}));
}

TEST_F(CollectOperation, EndsAtAnEmptyEntry) {
    ASSERT_TRUE(attach(0, {valve_}));
    blocks().addRepresentation(edit_.define(L"last"), nullptr);
    KtDxCallbackSet callbacks;
    EXPECT_EQ(blocks().collectBlockReferenceMonitors(callbacks), Orbx::eMissing);
    EXPECT_EQ(callbacks, KtDxCallbackSet{client_.at(0)});
}

using DetachExport = MonitorExports;

TEST_F(DetachExport, IgnoresNullArguments) {
    ASSERT_TRUE(attach(0, {valve_}));
    ktdxBlockReferenceMonitorDetach(nullptr, client_.at(0));
    ktdxBlockReferenceMonitorDetach(&document_, nullptr);
    EXPECT_TRUE(blocks().isEnabled());
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(0)));
}

TEST_F(DetachExport, WithoutAnApplicationDoesNothing) {
    application_.reset();
    detach(0);
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(DetachExport, MakesNoRecord) {
    application_->removeData(&document_);
    detach(0);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DetachExport, TakesTheCallbackOffEveryBlock) {
    ASSERT_TRUE(attach(0, {valve_, pump_}));
    ASSERT_TRUE(attach(1, {valve_}));
    detach(0);
    EXPECT_EQ(*monitorOf(valve_)->callbacks(), KtDxCallbackSet{client_.at(1)});
    EXPECT_TRUE(monitorOf(pump_)->callbacks()->empty());
}

TEST_F(DetachExport, OfOneOfTwoKeepsTheMonitorEnabled) {
    ASSERT_TRUE(attach(0, {valve_}));
    ASSERT_TRUE(attach(1, {pump_}));
    detach(0);
    EXPECT_TRUE(blocks().isEnabled());
}

TEST_F(DetachExport, OfTheLastDisablesTheMonitorAndKeepsTheMap) {
    ASSERT_TRUE(attach(0, {valve_}));
    const IdSet keys = keysOf(blocks());
    detach(0);
    EXPECT_FALSE(blocks().isEnabled());
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_EQ(keysOf(blocks()), keys);
}

TEST_F(DetachExport, OfOneThatWasNeverAttachedDisablesAMonitorWithoutCallbacks) {
    must(blocks().setEnabled(true));
    detach(3);
    EXPECT_FALSE(blocks().isEnabled());
}

TEST_F(DetachExport, OfNoneKeepsAMonitorWithoutCallbacksEnabled) {
    must(blocks().setEnabled(true));
    ktdxBlockReferenceMonitorDetach(&document_, nullptr);
    EXPECT_TRUE(blocks().isEnabled());
}

TEST_F(DetachExport, OfOneThatWasNeverAttachedKeepsTheOthers) {
    ASSERT_TRUE(attach(0, {valve_}));
    detach(3);
    EXPECT_TRUE(blocks().isEnabled());
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(0)));
}

TEST_F(DetachExport, StopsAtAnEmptyEntryAndStaysEnabled) {
    ASSERT_TRUE(attach(0, {valve_, pump_}));
    blocks().addRepresentation(KtDbObjectId(1), nullptr); // before all others
    detach(0);
    EXPECT_TRUE(monitorOf(valve_)->callbacks()->contains(client_.at(0)));
    EXPECT_TRUE(blocks().isEnabled());
}

using UpdateExport = MonitorExports;

TEST_F(UpdateExport, FailsForNoDocumentNoApplicationAndNoDrawing) {
    EXPECT_FALSE(ktdxUpdateBlockGraph(nullptr, true, true));
    EXPECT_FALSE(ktdxUpdateBlockGraph(&openWithoutDrawing(L"empty"), true, true));
    application_.reset();
    EXPECT_FALSE(ktdxUpdateBlockGraph(&document_, true, true));
}

TEST_F(UpdateExport, OfADrawingNeverSeenMakesItsRecordAndItsMonitor) {
    application_->removeData(&document_);
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, false, false));
    ASSERT_TRUE(hasRecord());
    EXPECT_NE(monitorOf(valve_), nullptr);
    EXPECT_FALSE(blocks().isEnabled());
}

TEST_F(UpdateExport, WithoutForceDoesNothingWhileDisabled) {
    blocks().setRescanNeeded(true);
    const KtDbObjectId late = edit_.define(L"late");
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, false, true));
    EXPECT_EQ(monitorOf(late), nullptr);
}

TEST_F(UpdateExport, WithoutForceScansWhatWasTouchedWhileEnabled) {
    ASSERT_TRUE(attach(0, {valve_}));
    const KtDbObjectId late = edit_.define(L"late");
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, false, true));
    EXPECT_NE(monitorOf(late), nullptr);
}

TEST_F(UpdateExport, WithForceScansWhileDisabled) {
    blocks();
    const KtDbObjectId late = edit_.define(L"late");
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    EXPECT_NE(monitorOf(late), nullptr);
}

TEST_F(UpdateExport, PropagatesAlsoWithoutTelling) {
    edit_.insert(valve_, pump_);
    ASSERT_TRUE(attach(0, {valve_}));
    edit_.insert(pump_);
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, false));
    EXPECT_TRUE(monitorOf(valve_)->isChanged());
    EXPECT_EQ(client_.takeCalls(), Ranks{});
}

} // namespace
