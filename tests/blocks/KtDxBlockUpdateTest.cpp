#include "blocks/ModelSpace.h"
#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <KtDbBlockReference.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

class BlockUpdate : public BlockMonitorTest {
protected:
    /// Marks cleared and as recorded now.
    KtDxBlock& settled(KtDbObjectId id) {
        KtDxBlock& block = monitor(id);
        forgetMarks(block);
        return block;
    }

    /// As somebody else may.
    void enterContainer(KtDxBlock& block) {
        block.references()->emplace(edit_.define(L"entered"), std::make_unique<KtDbObjectIdArray>());
    }
};

TEST_F(BlockUpdate, WithoutAnOwnerSomethingIsMissing) {
    KtDxBlock block;
    EXPECT_EQ(block.update(valve_), Orbx::eMissing);
    EXPECT_EQ(block.recordIds().length(), 0U);
}

TEST_F(BlockUpdate, TheNullIdIsNoBlock) {
    EXPECT_EQ(monitor(valve_).update({}), Orbx::eInvalidBlockId);
}

TEST_F(BlockUpdate, WithoutAnOwnerTheNullIdIsNotLookedAt) {
    KtDxBlock block;
    EXPECT_EQ(block.update({}), Orbx::eMissing);
}

TEST_F(BlockUpdate, ARecordIsAddedAndReportedOnce) {
    KtDxBlock& block = monitor(valve_);
    const KtDbObjectId other = edit_.anonymous();
    EXPECT_EQ(block.update(other), Orbx::eOk);
    EXPECT_EQ(block.update(other), Orbx::eOk);
    EXPECT_EQ(toIds(block.recordIds()), (Ids{valve_, other}));
    EXPECT_EQ(owner_->takeRepresentations(), Ids{other});
    EXPECT_EQ(monitorIn(*owner_, other), &block);
}

TEST_F(BlockUpdate, AnyNumberOfReferencesIsRecorded) {
    KtDxBlock& block = monitor(valve_);
    Recorded expected;
    for (int i = 0; i < 40; ++i) {
        const KtDbObjectId container = i % 3 == 0 ? edit_.paperSpace() : edit_.modelSpace();
        expected[container].push_back(edit_.insert(valve_, container));
        must(block.refresh());
        ASSERT_EQ(recordedOf(block), expected) << i + 1 << " references";
        forgetMarks(block);
        must(block.refresh());
        ASSERT_EQ(recordedOf(block), expected) << i + 1 << " references, again";
        ASSERT_FALSE(block.isChanged());
    }
}

TEST_F(BlockUpdate, WhileEnabledAnErasedReferenceStaysRecorded) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.erase(reference);
    must(block.refresh());
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(BlockUpdate, AmongManyOneThatDoesNotOpenIsLeftOut) {
    Ids references;
    for (int i = 0; i < 20; ++i) {
        references.push_back(edit_.insert(valve_));
    }
    const KtDbObjectId missed = references[10];
    {
        const OpenedObject<KtDbBlockReference> held(missed, KtDb::kForWrite);
        KtDxBlock& block = monitor(valve_);
        references.erase(references.begin() + 10);
        EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), references}}));
    }
    references.insert(references.begin() + 10, missed);
    KtDxBlock& block = *monitorIn(*owner_, valve_);
    must(block.refresh());
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), references}}));
    const OpenedObject<KtDbBlockReference> held(missed, KtDb::kForWrite);
    must(block.refresh());
    references.erase(references.begin() + 10);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), references}}));
}

TEST_F(BlockUpdate, ARecordStaysAddedWhenTheRescanFails) {
    KtDxBlock& block = monitor(valve_);
    const KtDbObjectId other = edit_.anonymous();
    const OpenedObject<KtDbBlockTableRecord> held(other, KtDb::kForWrite);
    EXPECT_EQ(block.update(other), Orbx::eWasOpenForWrite);
    EXPECT_EQ(toIds(block.recordIds()), (Ids{valve_, other}));
}

TEST_F(BlockUpdate, RefreshUpdatesWithTheDefinition) {
    class Listening : public KtDxBlock {
    public:
        Orbx::ErrorStatus update(KtDbObjectId recordId) override {
            asked_ = recordId;
            return Orbx::eOutOfRange;
        }

        KtDbObjectId asked() const { return asked_; }

    private:
        KtDbObjectId asked_{kNeverHandedOut};
    };

    Listening block;
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    EXPECT_EQ(block.init(owner_.get(), opened.get()), Orbx::eOutOfRange);
    EXPECT_EQ(block.asked(), valve_);
}

TEST_F(BlockUpdate, ReferencesAreFiledByContainerInAscendingOrder) {
    const KtDbObjectId pump = edit_.define(L"pump");
    const KtDbObjectId a = edit_.insert(valve_);
    const KtDbObjectId b = edit_.insert(valve_, pump);
    const KtDbObjectId c = edit_.insert(valve_);
    const KtDbObjectId d = edit_.insert(valve_, edit_.paperSpace());
    EXPECT_EQ(recordedOf(monitor(valve_)),
              (Recorded{{edit_.modelSpace(), {a, c}}, {pump, {b}}, {edit_.paperSpace(), {d}}}));
}

TEST_F(BlockUpdate, OnlyDirectReferencesAreRecorded) {
    const KtDbObjectId pump = edit_.define(L"pump");
    const KtDbObjectId inPump = edit_.insert(valve_, pump);
    edit_.insert(pump);
    EXPECT_EQ(recordedOf(monitor(valve_)), (Recorded{{pump, {inPump}}}));
}

TEST_F(BlockUpdate, ReferencesToAllRecordsAreRecorded) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDbObjectId toFirst = edit_.insert(first);
    const KtDbObjectId toPump = edit_.insert(pump);
    EXPECT_EQ(recordedOf(monitor(pump)), (Recorded{{edit_.modelSpace(), {toFirst, toPump}}}));
}

TEST_F(BlockUpdate, AnErasedRecordContributesNothing) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.erase(edit_.insert(first));
    KtDxBlock& block = settled(pump);
    EXPECT_EQ(recordedOf(block).size(), 1U);
    edit_.purge(first);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), Recorded{});
    EXPECT_TRUE(block.isChanged());
}

TEST_F(BlockUpdate, AnErasedReferenceIsRecordedUnderItsContainer) {
    const KtDbObjectId reference = edit_.insert(valve_);
    edit_.erase(reference);
    EXPECT_EQ(recordedOf(monitor(valve_)), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(BlockUpdate, ErasingIsNoChange) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.erase(reference);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_FALSE(block.isChanged());
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(BlockUpdate, RestoringIsNoChange) {
    const KtDbObjectId reference = edit_.insert(valve_);
    edit_.erase(reference);
    KtDxBlock& block = settled(valve_);
    edit_.restore(reference);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockUpdate, NothingNewIsNoChange) {
    edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockUpdate, ANewReferenceIsAChange) {
    edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.insert(valve_);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(owner_->changesWereTold());
}

TEST_F(BlockUpdate, AReferenceThatTheHostListsNoMoreIsAChange) {
    const KtDbObjectId stays = edit_.insert(valve_);
    const KtDbObjectId goes = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.erase(goes);
    edit_.release();
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {stays}}}));
}

TEST_F(BlockUpdate, WithoutReferencesEveryContainerGoesAndIsAChange) {
    const KtDbObjectId a = edit_.insert(valve_);
    const KtDbObjectId b = edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = settled(valve_);
    edit_.erase(a);
    edit_.erase(b);
    edit_.release();
    block.setNeedsUpdate(true);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), Recorded{});
    EXPECT_TRUE(block.isChanged());
    EXPECT_FALSE(block.needsUpdate());
}

TEST_F(BlockUpdate, ANewReferenceIsHeardWhileEnabled) {
    KtDxBlock& block = enabledMonitor(valve_);
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference, DrawingEditor::attributesOf(reference)[0]}));
}

TEST_F(BlockUpdate, ANewReferenceIsNotHeardWhileDisabled) {
    KtDxBlock& block = monitor(valve_);
    edit_.insertWithAttributes(valve_, 1);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), Ids{});
}

TEST_F(BlockUpdate, AReferenceThatIsNotListedIsLetGoOf) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDbObjectId reference = edit_.insertWithAttributes(first, 1);
    KtDxBlock& block = enabledMonitor(pump);
    edit_.erase(reference);
    edit_.purge(first); // the reference stays in memory, erased
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), (Ids{pump, first}));
    EXPECT_TRUE(block.attributesByReference().empty());
}

TEST_F(BlockUpdate, ARecordThatJoinsIsNotHeardUntilTheNextEnabling) {
    KtDxBlock& block = enabledMonitor(valve_);
    const KtDbObjectId other = edit_.anonymous();
    EXPECT_EQ(block.update(other), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), Ids{valve_});
}

TEST_F(BlockUpdate, ArraysGrowByEight) {
    edit_.insert(valve_);
    const auto& arrays = *monitor(valve_).references();
    EXPECT_EQ(arrays.at(edit_.modelSpace())->growLength(), 8U);
}

TEST_F(BlockUpdate, ARecordThatCannotBeOpenedChangesNothing) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.insert(valve_);
    block.setNeedsUpdate(true);
    const OpenedObject<KtDbBlockTableRecord> held(valve_, KtDb::kForWrite);
    EXPECT_EQ(block.refresh(), Orbx::eWasOpenForWrite);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
    EXPECT_FALSE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockUpdate, AQueryForReferencesThatFailsChangesNothing) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.insert(valve_);
    faults().fail(kthost::HostCall::getBlockReferenceIds, 1, Orbx::eOutOfRange);
    EXPECT_EQ(block.refresh(), Orbx::eOutOfRange);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockUpdate, AQueryForErasedReferencesThatFailsChangesNothing) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    edit_.insert(valve_);
    faults().fail(kthost::HostCall::getErasedBlockReferenceIds, 1, Orbx::eOutOfRange);
    EXPECT_EQ(block.refresh(), Orbx::eOutOfRange);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockUpdate, WhatEarlierRecordsGaveIsDiscardedWhenALaterOneFails) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    KtDxBlock& block = settled(pump);
    edit_.insert(pump);
    const OpenedObject<KtDbBlockTableRecord> held(first, KtDb::kForWrite);
    EXPECT_EQ(block.refresh(), Orbx::eWasOpenForWrite);
    EXPECT_EQ(recordedOf(block), Recorded{});
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockUpdate, AReferenceThatCannotBeOpenedCountsAsPresent) {
    const KtDbObjectId first = edit_.insert(valve_);
    const KtDbObjectId second = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    const Ids heard = heardBy(&block);
    const OpenedObject<KtDbBlockReference> held(second, KtDb::kForWrite);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {first}}}));
    EXPECT_FALSE(block.isChanged());
    EXPECT_EQ(heardBy(&block), heard);
}

TEST_F(BlockUpdate, AContainerWithoutItsArrayIsMissing) {
    edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    (*block.references())[edit_.modelSpace()] = nullptr;
    block.setNeedsUpdate(true);
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockUpdate, BehindOneThatBrokeOffRecordsEverything) {
    const KtDbObjectId first = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    auto& array = (*block.references())[edit_.modelSpace()];
    std::unique_ptr<KtDbObjectIdArray> kept = std::move(array);
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
    array = std::move(kept);
    const KtDbObjectId second = edit_.insert(valve_);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {first, second}}}));
}

TEST_F(BlockUpdate, AContainerThatSomebodyElseEnteredIsDropped) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    block.references()->emplace(edit_.paperSpace(), std::make_unique<KtDbObjectIdArray>());
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(BlockUpdate, AContainerThatSomebodyElseEnteredIsDroppedWithoutReferencesToo) {
    KtDxBlock& block = settled(valve_);
    enterContainer(block);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_EQ(recordedOf(block), Recorded{});
}

TEST_F(BlockUpdate, BehindAContainerThatSomebodyElseEnteredTheRecordStays) {
    const KtDbObjectId first = edit_.insert(valve_);
    const KtDbObjectId second = edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    enterContainer(block);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {first, second}}}));
}

/// Known references would be attached to a second time if they were taken for new.
TEST_F(BlockUpdate, AContainerThatSomebodyElseEnteredLeavesTheReferencesKnown) {
    const KtDbObjectId inPaper = edit_.insertWithAttributes(valve_, 1, edit_.paperSpace());
    const KtDbObjectId inModel = edit_.insertWithAttributes(valve_, 1);
    ASSERT_LT(edit_.modelSpace(), edit_.paperSpace());
    ASSERT_LT(inPaper, inModel); // the containers come in another order than what they hold
    KtDxBlock& block = enabledMonitor(valve_);
    enterContainer(block);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    for (const KtDbObjectId reference : {inPaper, inModel}) {
        EXPECT_EQ(toIds(block.attributesByReference().at(reference)), DrawingEditor::attributesOf(reference));
    }
}

TEST_F(BlockUpdate, AContainerWhoseOnlyReferenceCannotBeOpenedIsDropped) {
    const KtDbObjectId first = edit_.insert(valve_);
    const KtDbObjectId last = edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = settled(valve_);
    const OpenedObject<KtDbBlockReference> held(last, KtDb::kForWrite);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {first}}}));
}

TEST_F(BlockUpdate, AgainNeedsNoMemory) {
    edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    EXPECT_EQ(allocationsIn([&] { must(block.refresh()); }), 0U);
}

TEST_F(BlockUpdate, AgainNeedsNoMemoryAfterSomebodyElseHasLooked) {
    edit_.insert(valve_);
    KtDxBlock& block = settled(valve_);
    ASSERT_EQ(block.references()->size(), 1U);
    EXPECT_EQ(allocationsIn([&] { must(block.refresh()); }), 0U);
}

TEST_F(BlockUpdate, AgainNeedsNoMemoryAfterAContainerWasDroppedAndSomebodyElseHasLooked) {
    edit_.insert(valve_);
    edit_.insert(valve_);
    const KtDbObjectId only = edit_.insert(valve_, edit_.paperSpace());
    KtDxBlock& block = settled(valve_);
    edit_.erase(only);
    edit_.release();
    must(block.refresh());
    ASSERT_EQ(block.references()->size(), 1U);
    EXPECT_EQ(allocationsIn([&] { must(block.refresh()); }), 0U);
}

TEST_F(BlockUpdate, AClearedMarkIsLeftAloneByASuccessfulRescan) {
    KtDxBlock& block = monitor(valve_);
    block.setChanged(true);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
}

/// Files what lies in other drawings' model space where the test says.
class FilingOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    KtDbObjectId findXrefBlock(KtDbObjectId id) const override {
        asked_.push_back(id);
        return places_[std::min(asked_.size() - 1, places_.size() - 1)];
    }

    void file(Ids places) {
        places_ = std::move(places);
        asked_.clear();
    }

    const Ids& asked() const { return asked_; }

private:
    mutable Ids asked_;
    Ids places_{{}};
};

/// "other|tank", placed in the model space of the attached drawing "other".
class ForeignReferences : public BlockUpdate {
protected:
    ForeignReferences() {
        auto filing = std::make_unique<FilingOwner>(record());
        filing_ = filing.get();
        owner_ = std::move(filing);
        other_ = attachDrawing(L"other", [this](DrawingEditor& editor) {
            const KtDbObjectId tank = editor.define(L"tank");
            const KtDbObjectId frame = editor.define(L"frame");
            foreignModelSpace_ = editor.modelSpace();
            frame_ = frame;
            first_ = editor.insertWithAttributes(tank, 1);
            second_ = editor.insert(tank);
            inFrame_ = editor.insert(tank, frame);
        });
        tank_ = kthost::recordByName(drawing(), L"other|tank");
    }

    FilingOwner* filing_ = nullptr;
    AttachedDrawing other_;
    KtDbObjectId tank_;
    KtDbObjectId foreignModelSpace_;
    KtDbObjectId frame_;
    KtDbObjectId first_;
    KtDbObjectId second_;
    KtDbObjectId inFrame_;
};

TEST_F(ForeignReferences, InModelSpaceAreFiledWhereTheOwnerSays) {
    filing_->file({valve_});
    EXPECT_EQ(recordedOf(monitor(tank_)), (Recorded{{valve_, {first_, second_}}, {frame_, {inFrame_}}}));
    EXPECT_EQ(filing_->asked(), (Ids{foreignModelSpace_, foreignModelSpace_}));
}

TEST_F(ForeignReferences, WithoutAPlaceAreNotRecorded) {
    filing_->file({KtDbObjectId()});
    EXPECT_EQ(recordedOf(monitor(tank_)), (Recorded{{frame_, {inFrame_}}}));
}

TEST_F(ForeignReferences, WithAPlaceThatIsNoIdAreNotRecorded) {
    filing_->file({kNeverHandedOut});
    EXPECT_EQ(recordedOf(monitor(tank_)), (Recorded{{frame_, {inFrame_}}}));
}

TEST_F(ForeignReferences, ThatLoseTheirPlaceAreNotLetGoOf) {
    filing_->file({valve_});
    KtDxBlock& block = enabledMonitor(tank_);
    const Ids heard = heardBy(&block);
    filing_->file({KtDbObjectId()});
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{frame_, {inFrame_}}}));
    EXPECT_EQ(heardBy(&block), heard);
}

TEST_F(ForeignReferences, WithoutAPlaceAreNotHeard) {
    filing_->file({KtDbObjectId()});
    const KtDxBlock& block = enabledMonitor(tank_);
    EXPECT_EQ(heardBy(&block), (Ids{tank_, inFrame_}));
}

TEST_F(ForeignReferences, AContainerThatGetsItsFirstReferenceIsAChange) {
    filing_->file({valve_, valve_});
    KtDxBlock& block = settled(tank_);
    filing_->file({valve_, edit_.modelSpace()});
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_EQ(recordedOf(block),
              (Recorded{{valve_, {first_}}, {edit_.modelSpace(), {second_}}, {frame_, {inFrame_}}}));
}

TEST_F(ForeignReferences, AContainerLeftWithoutReferencesIsAChange) {
    filing_->file({valve_, edit_.modelSpace()});
    KtDxBlock& block = settled(tank_);
    filing_->file({valve_, valve_});
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_TRUE(block.isChanged());
    EXPECT_EQ(recordedOf(block), (Recorded{{valve_, {first_, second_}}, {frame_, {inFrame_}}}));
}

TEST_F(ForeignReferences, TheOwnDrawingsModelSpaceIsNotAskedFor) {
    edit_.insert(valve_);
    monitor(valve_);
    EXPECT_EQ(filing_->asked(), Ids{});
}

TEST_F(BlocksTest, ModelSpaceIsThatOfTheIdsOwnDrawing) {
    KtDbObjectId foreign;
    attachDrawing(L"other", [&](DrawingEditor& editor) { foreign = editor.modelSpace(); });
    EXPECT_TRUE(isModelSpaceBlockId(edit_.modelSpace()));
    EXPECT_TRUE(isModelSpaceBlockId(foreign));
    EXPECT_FALSE(isModelSpaceBlockId(edit_.paperSpace()));
    EXPECT_FALSE(isModelSpaceBlockId(edit_.define(L"valve")));
    EXPECT_FALSE(isModelSpaceBlockId({}));
    EXPECT_FALSE(isModelSpaceBlockId(kNeverHandedOut));
}

TEST_F(BlocksTest, AnIdWhoseDrawingIsClosedIsNoModelSpace) {
    kthost::Document& other = open(L"other");
    const KtDbObjectId modelSpace = other.database()->modelSpaceId();
    static_cast<void>(host().documents().close(other));
    EXPECT_FALSE(isModelSpaceBlockId(modelSpace));
}

} // namespace
