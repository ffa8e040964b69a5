#include "tests/blocks/BlocksTest.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

using kthost::HostCall;

/// The ids, ascending.
Ids sorted(Ids ids) {
    std::sort(ids.begin(), ids.end());
    return ids;
}

class BlockReactors : public BlockMonitorTest {
protected:
    /// What a reference with its attributes has to be heard through.
    static Ids withAttributes(KtDbObjectId reference) {
        Ids ids = DrawingEditor::attributesOf(reference);
        ids.insert(ids.begin(), reference);
        return ids;
    }

    static Ids attributesRecorded(const KtDxBlock& block, KtDbObjectId reference) {
        const auto entry = block.attributesByReference().find(reference);
        return entry == block.attributesByReference().end() ? Ids() : toIds(entry->second);
    }

    /// The number of opens that went before; the next is to fail.
    void failOpen(std::uint64_t k) { faults().fail(HostCall::openObject, k, Orbx::eTooManyReaders); }
};

TEST_F(BlockReactors, EnablingHearsRecordsReferencesAndAttributes) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDbObjectId reference = edit_.insertWithAttributes(first, 2);
    KtDxBlock& block = monitor(pump);
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    Ids expected = withAttributes(reference);
    expected.insert(expected.end(), {pump, first});
    EXPECT_EQ(heardBy(&block), sorted(expected));
}

TEST_F(BlockReactors, DisablingLetsGoOfAll) {
    edit_.insertWithAttributes(valve_, 2);
    KtDxBlock& block = enabledMonitor(valve_);
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{});
    EXPECT_TRUE(block.attributesByReference().empty());
}

TEST_F(BlockReactors, DisablingLetsGoOfWhatIsErasedMeanwhile) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.erase(reference);
    edit_.purge(valve_);
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), Ids{});
}

TEST_F(BlockReactors, EnablingWhatIsEnabledTouchesNothing) {
    edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    faults().reset();
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
    EXPECT_EQ(faults().calls(HostCall::addReactor), 0U);
}

TEST_F(BlockReactors, DisablingWhatIsDisabledTouchesNothing) {
    edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    faults().reset();
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
    EXPECT_EQ(faults().calls(HostCall::removeReactor), 0U);
}

TEST_F(BlockReactors, WithoutABlockEnablingSaysSoAndIsStored) {
    KtDxBlock block;
    EXPECT_EQ(block.setEnabled(true), Orbx::eInvalidBlockId);
    EXPECT_TRUE(block.isEnabled());
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(block.isEnabled());
}

TEST_F(BlockReactors, AnErasedDefinitionCannotBeHeardButItsReferencesAre) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    edit_.erase(reference);
    edit_.purge(valve_);
    EXPECT_EQ(block.setEnabled(true), Orbx::eInvalidBlockId);
    EXPECT_TRUE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{reference});
}

TEST_F(BlockReactors, ARecordThatWillNotOpenEndsEnablingThere) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    edit_.represent(pump, L"2");
    KtDxBlock& block = monitor(pump);
    failOpen(2);
    EXPECT_EQ(block.setEnabled(true), Orbx::eTooManyReaders);
    EXPECT_TRUE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{pump});
}

TEST_F(BlockReactors, AnErasedRepresentationEndsEnablingThere) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.represent(pump, L"2");
    KtDxBlock& block = monitor(pump);
    edit_.purge(first);
    EXPECT_EQ(block.setEnabled(true), Orbx::eWasErased);
    EXPECT_EQ(heardBy(&block), Ids{pump});
}

TEST_F(BlockReactors, ARecordThatWillNotOpenEndsDisablingThere) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDbObjectId second = edit_.represent(pump, L"2");
    KtDxBlock& block = enabledMonitor(pump);
    failOpen(2);
    EXPECT_EQ(block.setEnabled(false), Orbx::eTooManyReaders);
    EXPECT_FALSE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), (Ids{first, second}));
}

TEST_F(BlockReactors, AReferenceThatWillNotOpenIsPassedOver) {
    edit_.insert(valve_);
    const KtDbObjectId second = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    failOpen(1);
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), (Ids{valve_, second}));
}

TEST_F(BlockReactors, AContainerWithoutItsArrayEndsTheWalkOverReferences) {
    const KtDbObjectId a = edit_.insert(valve_, edit_.modelSpace());
    edit_.insert(valve_, edit_.define(L"y"));
    const KtDbObjectId c = edit_.insert(valve_, edit_.define(L"z"));
    KtDxBlock& block = monitor(valve_);
    block.references()->at(kthost::recordByName(drawing(), L"y")) = nullptr;
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), (Ids{valve_, a}));
    EXPECT_LT(a, c);
}

TEST_F(BlockReactors, AttributesAreRecordedByReferenceInTheirOrder) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 3);
    const KtDbObjectId without = edit_.insert(valve_);
    const KtDxBlock& block = enabledMonitor(valve_);
    EXPECT_EQ(attributesRecorded(block, reference), DrawingEditor::attributesOf(reference));
    EXPECT_FALSE(block.attributesByReference().contains(without));
}

TEST_F(BlockReactors, ErasedAttributesAreNotHeard) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    const Ids attributes = DrawingEditor::attributesOf(reference);
    must(kthost::eraseAttribute(drawing(), attributes[0]));
    const KtDxBlock& block = enabledMonitor(valve_);
    EXPECT_EQ(attributesRecorded(block, reference), Ids{attributes[1]});
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference, attributes[1]}));
}

TEST_F(BlockReactors, AttributesOfAnErasedReferenceAreNotHeard) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    edit_.erase(reference);
    const KtDxBlock& block = enabledMonitor(valve_);
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference}));
    EXPECT_TRUE(block.attributesByReference().empty());
}

TEST_F(BlockReactors, AnAttributeThatWillNotOpenIsPassedOver) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    const Ids attributes = DrawingEditor::attributesOf(reference);
    KtDxBlock& block = monitor(valve_);
    failOpen(2);
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(attributesRecorded(block, reference), Ids{attributes[1]});
}

TEST_F(BlockReactors, AReferenceWithoutAnIteratorIsHeardAlone) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    KtDxBlock& block = monitor(valve_);
    faults().fail(HostCall::attributeIterator, 1, Orbx::eOutOfRange);
    EXPECT_EQ(block.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference}));
}

/// A reference that could not be read during one rescan is new to the next, and is attached again.
class AttachedTwice : public BlockReactors {
protected:
    AttachedTwice() {
        {
            const OpenedObject<KtDbBlockReference> held(reference_, KtDb::kForWrite);
            must(block_.refresh());
        }
        must(block_.refresh());
    }

    KtDbObjectId reference_ = edit_.insertWithAttributes(valve_, 2);
    Ids attributes_ = DrawingEditor::attributesOf(reference_);
    KtDxBlock& block_ = enabledMonitor(valve_);
};

TEST_F(AttachedTwice, AReferenceHasItsAttributesTwice) {
    EXPECT_EQ(attributesRecorded(block_, reference_),
              (Ids{attributes_[0], attributes_[1], attributes_[0], attributes_[1]}));
}

TEST_F(AttachedTwice, AReferenceIsHeardOnce) {
    EXPECT_EQ(heardBy(&block_), (Ids{valve_, reference_, attributes_[0], attributes_[1]}));
}

TEST_F(AttachedTwice, OneDetachingLetsGoOfAll) {
    EXPECT_EQ(block_.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), Ids{});
    EXPECT_TRUE(block_.attributesByReference().empty());
}

TEST_F(BlockReactors, AReferenceThatWasNotLetGoOfHasItsAttributesTwiceBehindTheNextEnabling) {
    const KtDbObjectId first = edit_.insertWithAttributes(valve_, 1);
    const KtDbObjectId refuses = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    failOpen(3); // behind the first and its attribute
    must(block.setEnabled(false));
    must(block.setEnabled(true));
    const Ids attributes = DrawingEditor::attributesOf(refuses);
    EXPECT_EQ(attributesRecorded(block, refuses), (Ids{attributes[0], attributes[0]}));
    EXPECT_EQ(attributesRecorded(block, first), DrawingEditor::attributesOf(first));
}

TEST_F(BlockReactors, ANewReferenceWhoseAttributesAreErasedIsHeardAlone) {
    KtDxBlock& block = enabledMonitor(valve_);
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    must(kthost::eraseAttribute(drawing(), DrawingEditor::attributesOf(reference)[0]));
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_FALSE(block.attributesByReference().contains(reference));
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference}));
}

TEST_F(BlockReactors, WithoutAnOwnerWhatIsRecordedIsHeard) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 2);
    KtDxBlock block;
    auto recorded = std::make_unique<KtDbObjectIdArray>(0, 8);
    recorded->append(reference);
    block.references()->emplace(edit_.modelSpace(), std::move(recorded));
    EXPECT_EQ(block.setEnabled(true), Orbx::eInvalidBlockId);
    EXPECT_EQ(attributesRecorded(block, reference), DrawingEditor::attributesOf(reference));
    EXPECT_EQ(heardBy(&block), withAttributes(reference));
}

using BlockReset = BlockReactors;

TEST_F(BlockReset, ForgetsAllButItsRecords) {
    edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    block.addCallback(client_.at(0));
    block.setChanged(true);
    block.reset();
    EXPECT_FALSE(block.isEnabled());
    EXPECT_FALSE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_TRUE(block.blockId().isNull());
    EXPECT_TRUE(block.references()->empty());
    EXPECT_TRUE(block.callbacks()->empty());
    EXPECT_TRUE(block.attributesByReference().empty());
    EXPECT_EQ(toIds(block.recordIds()), Ids{valve_});
    EXPECT_EQ(heardBy(&block), Ids{});
}

TEST_F(BlockReset, LeavesItWithoutAnOwner) {
    KtDxBlock& block = monitor(valve_);
    block.reset();
    EXPECT_EQ(block.update(valve_), Orbx::eMissing);
}

using BlockNotifications = BlockReactors;

TEST_F(BlockNotifications, AReferenceOpenedForModifyIsAChange) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.move(reference);
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockNotifications, AnAttributeOpenedForModifyIsAChange) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    must(kthost::setAttributeText(drawing(), reference, L"A", L"other"));
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockNotifications, TheDefinitionOpenedForModifyOnlyAsksForARescan) {
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.insert(edit_.define(L"stem"), valve_);
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockNotifications, ARepresentationOpenedForModifyOnlyAsksForARescan) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    KtDxBlock& block = enabledMonitor(pump);
    edit_.insert(valve_, first);
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockNotifications, AnExternalReferencesRecordOpenedForModifyIsAChange) {
    const AttachedDrawing other = attachDrawing(L"other");
    KtDxBlock& block = enabledMonitor(other.record);
    must(kthost::reloadDrawing(drawing(), other.record));
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockNotifications, ACopiedReferenceIsAChange) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.copy(reference);
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockNotifications, ACopiedAttributeIsAChange) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    const OpenedObject<KtDbAttribute> attribute(DrawingEditor::attributesOf(reference)[0], KtDb::kForNotify);
    block.copied(attribute.get(), nullptr);
    EXPECT_TRUE(block.isChanged());
}

TEST_F(BlockNotifications, ACopiedDefinitionOnlyAsksForARescan) {
    KtDxBlock& block = enabledMonitor(valve_);
    KtDbObjectId copy;
    must(kthost::copyDefinition(drawing(), valve_, L"copy", copy));
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockNotifications, ACopiedExternalReferencesRecordOnlyAsksForARescan) {
    const AttachedDrawing other = attachDrawing(L"other");
    KtDxBlock& block = enabledMonitor(other.record);
    const OpenedObject<KtDbBlockTableRecord> opened(other.record, KtDb::kForNotify);
    block.copied(opened.get(), nullptr);
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockNotifications, GoodbyeLetsGoOfTheObjectAndDropsNothing) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    const KtDbObjectId attribute = DrawingEditor::attributesOf(reference)[0];
    KtDxBlock& block = enabledMonitor(valve_);
    const Recorded recorded = recordedOf(block);
    const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForNotify);
    block.goodbye(opened.get());
    EXPECT_EQ(heardBy(&block), (Ids{valve_, attribute}));
    EXPECT_EQ(recordedOf(block), recorded);
    EXPECT_EQ(attributesRecorded(block, reference), Ids{attribute});
    EXPECT_FALSE(block.isChanged());
    EXPECT_FALSE(block.needsUpdate());
}

/// The notifications that set no mark.
class OtherNotifications : public BlockReactors {
protected:
    void expectNoMarks() {
        EXPECT_FALSE(block_.isChanged());
        EXPECT_FALSE(block_.needsUpdate());
    }

    KtDbObjectId reference_ = edit_.insert(valve_);
    KtDxBlock& block_ = enabledMonitor(valve_);
    OpenedObject<KtDbBlockReference> opened_{reference_, KtDb::kForNotify};
};

TEST_F(OtherNotifications, CancelledSetsNoMark) {
    block_.cancelled(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, ErasedSetsNoMark) {
    block_.erased(opened_.get(), true);
    expectNoMarks();
}

TEST_F(OtherNotifications, RestoredSetsNoMark) {
    block_.erased(opened_.get(), false);
    expectNoMarks();
}

TEST_F(OtherNotifications, ModifiedSetsNoMark) {
    block_.modified(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, SubObjectModifiedSetsNoMark) {
    block_.subObjectModified(opened_.get(), opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, ModifyUndoneSetsNoMark) {
    block_.modifyUndone(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, ModifiedXDataSetsNoMark) {
    block_.modifiedXData(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, UnappendedSetsNoMark) {
    block_.unappended(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, ReappendedSetsNoMark) {
    block_.reappended(opened_.get());
    expectNoMarks();
}

TEST_F(OtherNotifications, ObjectClosedSetsNoMark) {
    block_.objectClosed(reference_);
    expectNoMarks();
}

} // namespace
