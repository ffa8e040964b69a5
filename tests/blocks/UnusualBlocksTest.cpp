#include "blocks/KtDbBlockTableIter.h"
#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/MadeUpRecord.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtRxClass.h>

#include <functional>
#include <stdexcept>

/// Blocks, owners and records that do what those of a drawing do not.
namespace {

using kthost::HostCall;

using UnusualBlock = BlockMonitorTest;

TEST_F(UnusualBlock, OfAnIdThatWasNeverHandedOutCannotBeHeard) {
    const MadeUpRecord record(kNeverHandedOut);
    KtDxBlock block;
    EXPECT_NE(block.init(owner_.get(), &record), Orbx::eOk);
    EXPECT_EQ(block.setEnabled(true), Orbx::eInvalidBlockId);
    faults().reset();
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

TEST_F(UnusualBlock, OfAnObjectWhoseOwnerIsErasedCannotBeHeard) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    const KtDbObjectId attribute = DrawingEditor::attributesOf(reference)[0];
    edit_.erase(reference);
    ASSERT_FALSE(attribute.isErased());
    const MadeUpRecord record(attribute);
    KtDxBlock block;
    EXPECT_NE(block.init(owner_.get(), &record), Orbx::eOk);
    EXPECT_EQ(block.setEnabled(true), Orbx::eInvalidBlockId);
}

/// The host's exceptions are nobody's in the module to catch.
class ThrowingOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    void addRepresentation(KtDbObjectId id, KtDxBlock* block) override {
        QuietOwner::addRepresentation(id, block);
        if (keysOf(*this).size() == 2) {
            throw std::runtime_error("the host");
        }
    }
};

TEST_F(UnusualBlock, ThatAnExceptionEndsIsReachedByNoKey) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    edit_.represent(pump, L"2");
    ThrowingOwner owner(record());
    const OpenedObject<KtDbBlockTableRecord> opened(pump, KtDb::kForRead);
    std::unique_ptr<KtDxBlock> block;
    EXPECT_THROW(std::ignore = KtDxBlock::create(&owner, opened.get(), block), std::runtime_error);
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(keysOf(owner), IdSet{});
}

class ThrowingRecord : public MadeUpRecord {
public:
    using MadeUpRecord::MadeUpRecord;

    KtDbObjectId objectId() const override { throw std::runtime_error("the host"); }
};

TEST_F(UnusualBlock, ThatAnExceptionEndsBearsNoMark) {
    const ThrowingRecord record(kNeverHandedOut);
    std::unique_ptr<KtDxBlock> block;
    EXPECT_THROW(std::ignore = KtDxBlock::create(owner_.get(), &record, block), std::runtime_error);
    EXPECT_EQ(owner_->marks().needsUpdate, 0U);
}

TEST_F(UnusualBlock, ThatAnExceptionEndsWithoutAnOwnerIsGone) {
    const ThrowingRecord record(kNeverHandedOut);
    std::unique_ptr<KtDxBlock> block;
    EXPECT_THROW(std::ignore = KtDxBlock::create(owner_.get(), &record, block), std::runtime_error);
    EXPECT_EQ(block, nullptr);
}

TEST_F(UnusualBlock, WithoutMemoryIsNoBlockAndReachedByNoKey) {
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        KtDxBlock* made = nullptr;
        Orbx::ErrorStatus status = Orbx::eOk;
        {
            const FailingAllocation none(k);
            status = owner_->createBlockMonitor(made, opened.get());
            failed = none.hasFailed();
        }
        EXPECT_EQ(status, failed ? Orbx::eMissing : Orbx::eOk) << k;
        EXPECT_EQ(made == nullptr, failed) << k;
        EXPECT_EQ(keysOf(*owner_), failed ? IdSet() : IdSet{valve_}) << k;
    }
}

TEST_F(UnusualBlock, ThatIsDynamicWithoutMemoryIsReachedByNoKey) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const OpenedObject<KtDbBlockTableRecord> opened(pump, KtDb::kForRead);
    KtDxBlock* made = nullptr;
    for (std::size_t k = 1; made == nullptr; ++k) {
        {
            const FailingAllocation none(k);
            std::ignore = owner_->createBlockMonitor(made, opened.get());
        }
        EXPECT_EQ(keysOf(*owner_), made == nullptr ? IdSet() : (IdSet{pump, first})) << k;
    }
}

TEST_F(UnusualBlock, WithoutMemoryForARecordTakesItAtTheNextUpdate) {
    const KtDbObjectId other = edit_.anonymous();
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        KtDxBlock& block = monitor(valve_);
        {
            const FailingAllocation none(k);
            const Orbx::ErrorStatus status = block.update(other);
            failed = none.hasFailed();
            EXPECT_EQ(status, failed ? Orbx::eMissing : Orbx::eOk) << k;
        }
        EXPECT_EQ(block.update(other), Orbx::eOk);
        EXPECT_EQ(toIds(block.recordIds()), (Ids{valve_, other})) << k;
        EXPECT_EQ(monitorIn(*owner_, other), &block) << k;
        owner_->reset();
        must(owner_->attachDocument(&record()));
    }
}

/// Made without room and given it for the growth length at the first element.
void expectGrownByEight(const KtArray<KtDbObjectId>& array) {
    EXPECT_EQ(array.growLength(), 8U);
    EXPECT_EQ(array.physicalLength(), 8U);
}

TEST_F(UnusualBlock, TheArrayOfLayoutsBeginsWithRoomForEight) {
    expectGrownByEight(blocks().layoutIds());
}

/// Most blocks have one record, and most containers one or two references of a block; what needs more needs
/// many more.
TEST_F(UnusualBlock, ArraysOfABlockBeginSmallAndGrowByEight) {
    edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    KtDbObjectIdArray& references = *block.references()->at(edit_.modelSpace());
    EXPECT_EQ(references.physicalLength(), 2U);
    edit_.insert(valve_);
    edit_.insert(valve_);
    must(block.refresh());
    EXPECT_EQ(references.physicalLength(), 10U);
    EXPECT_EQ(block.recordIds().physicalLength(), 1U);
    must(block.update(edit_.anonymous()));
    EXPECT_EQ(block.recordIds().physicalLength(), 9U);
}

/// There are too many of them for room that is not needed.
TEST_F(UnusualBlock, ArraysOfAttributesHaveNoRoomToSpare) {
    const KtDbObjectId two = edit_.insertWithAttributes(valve_, 2);
    const KtDbObjectId also = edit_.insertWithAttributes(valve_, 2);
    const KtDbObjectId one = edit_.insertWithAttributes(valve_, 1);
    const KtDxBlock::Attributes& attributes = enabledMonitor(valve_).attributesByReference();
    EXPECT_EQ(attributes.at(two).physicalLength(), 2U);
    EXPECT_EQ(attributes.at(also).physicalLength(), 2U);
    EXPECT_EQ(attributes.at(one).physicalLength(), 1U);
    EXPECT_EQ(attributes.at(one).growLength(), 8U);
}

/// Most references of a block have the same attributes.
TEST_F(UnusualBlock, ArraysOfAttributesBeginWithTheRoomThatTheOneBeforeNeeded) {
    edit_.insertWithAttributes(valve_, 2);
    KtDxBlock& block = enabledMonitor(valve_);
    for (const std::size_t room : {8U, 9U}) { // as they would have grown, from nothing or from one
        edit_.insertWithAttributes(valve_, 2);
        const FailingAllocation none(1, (room + 1) * sizeof(KtDbObjectId)); // the room's length lies in front
        must(block.refresh());
        EXPECT_FALSE(none.hasFailed()) << room;
    }
}

TEST_F(UnusualBlock, ArraysOfANewReferencesAttributesGrowByEight) {
    KtDxBlock& block = enabledMonitor(valve_);
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    must(block.refresh());
    EXPECT_EQ(block.attributesByReference().at(reference).growLength(), 8U);
}

/// Has no references to show.
class SilentBlock : public KtDxBlock {
public:
    References* references() override { return nullptr; }
};

class UnusualMonitor : public BlocksTest {
protected:
    KtDbObjectId valve_ = edit_.define(L"valve");
    KtDbObjectId pump_ = edit_.define(L"pump");
};

TEST_F(UnusualMonitor, PassesOverABlockWithoutReferences) {
    edit_.insert(valve_, pump_);
    must(blocks().scanBlockTable());
    const KtDbObjectId silent = edit_.define(L"silent");
    blocks().addRepresentation(silent, new SilentBlock); // its keys own it
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(pump_, true, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{valve_});
    EXPECT_EQ(blocks().countReferences(silent, pump_, false), 0U);
}

TEST_F(UnusualMonitor, CountsNothingInAContainerWhoseOwnerIsErased) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    const KtDbObjectId attribute = DrawingEditor::attributesOf(reference)[0];
    edit_.erase(reference);
    auto array = std::make_unique<KtDbObjectIdArray>(0, 8);
    array->append(reference);
    must(blocks().scanBlockTable());
    monitorOf(valve_)->references()->insert_or_assign(attribute, std::move(array));
    blocks().addRepresentation(attribute, monitorOf(pump_)); // a container has to be a key
    EXPECT_EQ(blocks().countReferences(valve_, attribute, false), 1U);
    EXPECT_EQ(blocks().countReferences(valve_, attribute, true), 0U);
}

/// Answers about nesting as a test wants it.
class NestingAs : public KtDxBlocks {
public:
    using Answer = std::function<Orbx::ErrorStatus(KtDbObjectIdSet&)>;

    NestingAs(KtDxDocument& document, Answer answer) : answer_(std::move(answer)) {
        must(attachDocument(&document));
    }

    using KtDxBlocks::collectNestedBlocks;

    Orbx::ErrorStatus collectNestedBlocks(KtDbObjectId /*container*/, bool /*recursive*/,
                                          KtDbObjectIdSet& nested, KtDbObjectIdSet& /*visited*/) override {
        return answer_(nested);
    }

private:
    Answer answer_;
};

TEST_F(UnusualMonitor, MarksEverythingWhenNestingCannotBeTold) {
    NestingAs blocks(record(), [](KtDbObjectIdSet&) { return Orbx::eMissing; });
    monitorIn(blocks, valve_)->setChanged(true);
    blocks.propagateChanges();
    EXPECT_TRUE(monitorIn(blocks, pump_)->isChanged());
}

TEST_F(UnusualMonitor, PassesOverANestedBlockThatIsNotMonitored) {
    NestingAs blocks(record(), [this](KtDbObjectIdSet& nested) {
        nested = {kNeverHandedOut, pump_};
        return Orbx::eOk;
    });
    ASSERT_LT(kNeverHandedOut, pump_);
    monitorIn(blocks, valve_)->setChanged(true);
    blocks.propagateChanges();
    EXPECT_TRUE(monitorIn(blocks, pump_)->isChanged());
}

TEST_F(UnusualMonitor, StopsMarkingAtAnEntryThatIsEmptyByThen) {
    KtDxBlocks* entered = nullptr;
    NestingAs blocks(record(), [&](KtDbObjectIdSet& nested) {
        nested = {kNeverHandedOut, pump_};
        entered->addRepresentation(kNeverHandedOut, nullptr);
        return Orbx::eOk;
    });
    entered = &blocks;
    monitorIn(blocks, valve_)->setChanged(true);
    blocks.propagateChanges();
    EXPECT_FALSE(monitorIn(blocks, pump_)->isChanged());
}

TEST_F(UnusualMonitor, NeedingARescanKeepsTheBlocksNeedOfAnUpdate) {
    monitorOf(valve_)->setNeedsUpdate(true);
    blocks().setRescanNeeded(true);
    EXPECT_TRUE(monitorOf(valve_)->needsUpdate());
}

TEST_F(UnusualMonitor, DetachingNoCallbackKeepsTheOthers) {
    ASSERT_TRUE(attach(0, {valve_}));
    blocks().detachBlockReferenceMonitor(nullptr);
    EXPECT_EQ(*monitorOf(valve_)->callbacks(), KtDxCallbackSet{client_.at(0)});
}

TEST_F(UnusualMonitor, WithoutMemoryCannotGatherTheCallbacks) {
    ASSERT_TRUE(attach(0, {valve_}));
    KtDxCallbackSet callbacks;
    {
        const FailingAllocation none;
        EXPECT_EQ(blocks().collectBlockReferenceMonitors(callbacks), Orbx::eMissing);
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_TRUE(callbacks.empty());
}

TEST_F(UnusualMonitor, EnabledAgainAfterItFailedHalfWayHearsTheBlockTableOnce) {
    KtDxBlocks& made = blocks();
    {
        const FailingAllocation none(1, sizeof(KtDxTimer));
        ASSERT_EQ(made.setEnabled(true), Orbx::eMissing);
    }
    faults().reset();
    EXPECT_EQ(made.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::removeReactor), 0U);
    EXPECT_EQ(heardBy(&made), Ids{drawing().blockTableId()});
}

TEST_F(UnusualMonitor, IsDestroyedThoughTheBlockTableCannotBeLetGoOf) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    must(made->setEnabled(true));
    made->reset(); // from here on only the block table is heard
    KtDbObjectReactor* const gone = made.get();
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders, true);
    made.reset();
    faults().reset();
    EXPECT_EQ(heardBy(gone), Ids{drawing().blockTableId()});
    const OpenedObject<KtDbObject> blockTable(drawing().blockTableId(), KtDb::kForNotify);
    must(blockTable->removeReactor(gone));
}

TEST_F(UnusualMonitor, IsDestroyedWithoutAskingAgainForAFilterThatWasRefused) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    faults().fail(HostCall::registerFilter, 1, Orbx::eInvalidInput);
    must(made->setEnabled(true));
    faults().reset();
    made.reset();
    EXPECT_EQ(faults().calls(HostCall::registerFilter), 0U);
}

TEST_F(UnusualMonitor, IsDestroyedDisabledWithoutTouchingAnything) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    faults().reset();
    made.reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
    EXPECT_EQ(faults().calls(HostCall::addReactor), 0U);
}

TEST_F(UnusualMonitor, IsDestroyedAfterDisablingWithoutTouchingAnything) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    must(made->setEnabled(true));
    must(made->setEnabled(false));
    faults().reset();
    made.reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

TEST_F(UnusualMonitor, AsksAReferenceThatSomebodyIsWritingWhatItRepresents) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump 2");
    must(blocks().scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const OpenedObject<KtDbBlockReference> held(edit_.insert(first), KtDb::kForWrite);
    must(held.status());
    EXPECT_EQ(blocks().scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorOf(first), monitorOf(pump));
}

TEST_F(UnusualMonitor, TakesAnAnonymousRecordForItsOwnKeyWithoutTheProtocol) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump 2");
    must(blocks().scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.insert(first);
    KtRxObject* extension = KtDbBlockReference::desc()->removeX(KtDbBlockRepresentation::desc());
    EXPECT_EQ(blocks().scanBlockTable(), Orbx::eOk);
    KtDbBlockReference::desc()->addX(KtDbBlockRepresentation::desc(), extension);
    EXPECT_EQ(monitorOf(first)->blockId(), first);
}

using UnusualWalk = BlocksTest;

TEST_F(UnusualWalk, OfATableThatSomebodyIsWritingIsDone) {
    const OpenedObject<KtDbBlockTable> held(drawing().blockTableId(), KtDb::kForWrite);
    must(held.status());
    const KtDbBlockTableIter records(drawing());
    EXPECT_EQ(records.status(), Orbx::eWasOpenForWrite);
    EXPECT_TRUE(records.done());
    EXPECT_TRUE(records.recordId().isNull());
}

TEST_F(UnusualWalk, BehindTheLastRecordIsAtNone) {
    KtDbBlockTableIter records(drawing());
    while (!records.done()) {
        records.step();
    }
    EXPECT_TRUE(records.recordId().isNull());
    EXPECT_FALSE(records.open());
}

} // namespace
