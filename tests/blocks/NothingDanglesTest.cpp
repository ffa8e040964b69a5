#include "blocks/KtDbBlockTableIter.h"
#include "kthost/database/DatabaseObject.h"
#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>

namespace {

using kthost::HostCall;

/// A drawing with a bit of everything.
class NothingDangles : public BlocksTest {
protected:
    NothingDangles() {
        edit_.insertWithAttributes(first_, 2);
        edit_.insertWithAttributes(second_, 1, valve_);
        goes_ = edit_.insertWithAttributes(valve_, 2);
        stays_ = edit_.insertWithAttributes(valve_, 1);
        attachDrawing(L"other",
                      [](DrawingEditor& editor) { editor.insertWithAttributes(editor.define(L"tank"), 1); });
    }

    /// Everything that has the module look at, hear and let go of objects.
    void history() {
        attach(0, {valve_, pump_});
        command([this] {
            edit_.move(stays_);
            edit_.erase(goes_);
            edit_.insertWithAttributes(pump_, 1);
        });
        detach(0);
        attach(1, {valve_});
        ktdxUpdateBlockGraph(&document_, true, true);
    }

    void expectNothingLeft(const std::string& when) {
        application_.reset();
        EXPECT_EQ(reactorCount(), 0U) << when;
        EXPECT_EQ(openCount(), 0U) << when;
    }

    KtDbObjectId valve_ = edit_.define(L"valve");
    KtDbObjectId pump_ = edit_.defineDynamic(L"pump");
    KtDbObjectId first_ = edit_.represent(pump_, L"1");
    KtDbObjectId second_ = edit_.represent(pump_, L"2");
    KtDbObjectId goes_;
    KtDbObjectId stays_;
};

/// Each call of one kind fails once, in a history of its own.
class AfterOneFailing : public NothingDangles, public testing::WithParamInterface<HostCall> {};

TEST_P(AfterOneFailing, CallNothingIsLeftBehind) {
    faults().reset();
    history();
    const std::uint64_t calls = faults().calls(GetParam());
    ASSERT_GT(calls, 0U);
    for (std::uint64_t k = 1; k <= calls; ++k) {
        edit_.restore(goes_);
        faults().reset();
        faults().fail(GetParam(), k, Orbx::eTooManyReaders);
        history();
        expectNothingLeft("call " + std::to_string(k));
        application_ = std::make_unique<KtDxApplication>();
    }
}

TEST_P(AfterOneFailing, CallAForcedUpdatePutsTheRecordedStateRight) {
    faults().reset();
    for (std::uint64_t k = 1; k <= 40; ++k) {
        faults().fail(GetParam(), k, Orbx::eTooManyReaders);
        attach(0, {valve_, pump_});
        faults().reset();
        ASSERT_TRUE(ktdxUpdateBlockGraph(&document_, true, false)) << k;
        EXPECT_EQ(recordedOf(*monitorOf(valve_)), (Recorded{{edit_.modelSpace(), {goes_, stays_}}})) << k;
        application_ = nullptr;
        application_ = std::make_unique<KtDxApplication>();
    }
}

INSTANTIATE_TEST_SUITE_P(Host, AfterOneFailing,
                         testing::Values(HostCall::openObject, HostCall::addReactor, HostCall::removeReactor,
                                         HostCall::newTableIterator, HostCall::getRecordId,
                                         HostCall::getBlockReferenceIds, HostCall::getErasedBlockReferenceIds,
                                         HostCall::attributeIterator, HostCall::getEvalGraph,
                                         HostCall::getRepresentations, HostCall::originalBlockTableRecord));

TEST_F(NothingDangles, OnRecordsBehindARepresentationThatWasReleased) {
    const KtDbObjectId third = edit_.represent(pump_, L"3");
    const KtDbObjectId fourth = edit_.represent(pump_, L"4");
    must(blocks().setEnabled(true));
    edit_.purge(third);
    edit_.release();
    EXPECT_FALSE(heardBy(monitorOf(pump_)).empty());
    expectNothingLeft("a representation was released");
    EXPECT_TRUE(fourth.isValid());
}

TEST_F(NothingDangles, OnAReferenceThatARescanCouldNotOpen) {
    ASSERT_TRUE(attach(0, {valve_}));
    {
        const OpenedObject<KtDbBlockReference> held(goes_, KtDb::kForWrite);
        ktdxUpdateBlockGraph(&document_, true, false);
    }
    expectNothingLeft("a reference was open for write");
}

TEST_F(NothingDangles, OnAReferenceWhoseAttachedDrawingLostItsRecord) {
    ASSERT_TRUE(attach(0, {valve_}));
    must(kthost::detachDrawing(drawing(), kthost::recordByName(drawing(), L"other")));
    ktdxUpdateBlockGraph(&document_, true, false);
    expectNothingLeft("the drawing was detached");
}

TEST_F(NothingDangles, OnReferencesThatARescanWithoutMemoryDidNotComeTo) {
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        ASSERT_TRUE(attach(0, {valve_}));
        {
            const FailingAllocation none(k);
            try {
                ktdxUpdateBlockGraph(&document_, true, false);
            } catch (const std::bad_alloc&) { // the host's own, which passes through
                SUCCEED();
            }
            failed = none.hasFailed();
        }
        application_.reset();
        ASSERT_EQ(reactorCount(), 0U) << k;
        application_ = std::make_unique<KtDxApplication>();
    }
}

TEST_F(NothingDangles, WhenTheDocumentCloses) {
    ASSERT_TRUE(attach(0, {valve_}));
    static_cast<void>(host().documents().close(document_));
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_EQ(openCount(), 0U);
}

// The scoped holder

/// An object without an id; says when it is deleted.
class LooseAttribute : public kthost::DatabaseObject<KtDbAttribute> {
public:
    explicit LooseAttribute(bool& deleted) : deleted_(deleted) {}

    LooseAttribute(const LooseAttribute&) = delete;
    LooseAttribute& operator=(const LooseAttribute&) = delete;

    ~LooseAttribute() override { deleted_ = true; }

    const wchar_t* tag() const override { return L""; }

    const wchar_t* text() const override { return L""; }

private:
    bool& deleted_;
};

using Holder = BlocksTest;

TEST_F(Holder, DeletesAnObjectThatNeverReceivedAnId) {
    bool deleted = false;
    { const OpenedObject<KtDbAttribute> holder(new LooseAttribute(deleted)); }
    EXPECT_TRUE(deleted);
}

TEST_F(Holder, ClosesAnObjectOfADrawing) {
    {
        const OpenedObject<KtDbBlockTableRecord> holder(edit_.modelSpace(), KtDb::kForRead);
        EXPECT_EQ(openCount(), 1U);
    }
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(Holder, ClosesWhenAnExceptionPasses) {
    try {
        const OpenedObject<KtDbBlockTableRecord> holder(edit_.modelSpace(), KtDb::kForRead);
        throw 1;
    } catch (int) {
        EXPECT_EQ(openCount(), 0U);
    }
}

TEST_F(Holder, ClosesOnce) {
    const OpenedObject<KtDbBlockTableRecord> another(edit_.modelSpace(), KtDb::kForRead);
    {
        OpenedObject<KtDbBlockTableRecord> holder(edit_.modelSpace(), KtDb::kForRead);
        holder.close();
        EXPECT_FALSE(holder);
    }
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(Holder, TellsWhyThereIsNothing) {
    const OpenedObject<KtDbBlockTableRecord> holder({}, KtDb::kForRead);
    EXPECT_FALSE(holder);
    EXPECT_EQ(holder.status(), Orbx::eNullObjectId);
}

TEST_F(Holder, OfWhatSomethingElseOpenedTellsOfNoFailure) {
    KtDbBlockTableRecord* opened = nullptr;
    must(ktdbOpenObject(opened, edit_.modelSpace(), KtDb::kForRead));
    const OpenedObject<KtDbBlockTableRecord> holder(opened);
    EXPECT_EQ(holder.status(), Orbx::eOk);
}

using TableIterator = BlocksTest;

TEST_F(TableIterator, WalksTheLivingRecordsInTableOrder) {
    const KtDbObjectId erased = edit_.define(L"erased");
    const KtDbObjectId valve = edit_.define(L"valve");
    edit_.purge(erased);
    Ids ids;
    for (KtDbBlockTableIter records(drawing()); !records.done(); records.step()) {
        ids.push_back(records.recordId());
    }
    EXPECT_EQ(ids, (Ids{edit_.modelSpace(), edit_.paperSpace(), valve}));
}

TEST_F(TableIterator, KeepsTheTableOpenAsLongAsItLives) {
    {
        const KtDbBlockTableIter records(drawing());
        EXPECT_EQ(openCount(), 1U);
    }
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(TableIterator, IsDoneWhenTheTableWillNotOpen) {
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    const KtDbBlockTableIter records(drawing());
    EXPECT_TRUE(records.done());
    EXPECT_EQ(records.status(), Orbx::eTooManyReaders);
}

} // namespace
