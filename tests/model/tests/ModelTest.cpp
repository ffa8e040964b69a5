#include "tests/model/tests/ModelFixture.h"

#include "tests/model/GraphModel.h"
#include "tests/model/Opened.h"

#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/OpenObjects.h"

#include <KtDbBlockReference.h>

#include <gmock/gmock.h>

using namespace ktmodel;
using namespace kthost;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST_F(ModelTest, CallsTheClientOfABlockThatIsPlacedOnceAtTheNextIdleCheck) {
    attach({r_}, 3);
    EXPECT_THAT(idle(), IsEmpty());
    place(r_);
    place(r_);
    EXPECT_THAT(idle(), ElementsAre(3));
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, CallsNobodyForWhatWasThereBefore) {
    place(r_);
    attach({r_}, 3);
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, CallsNobodyForABlockThatNobodyWatches) {
    attach({r_}, 3);
    place(s_);
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, CallsAClientOfSeveralChangedBlocksOnceAndAllInOrder) {
    attach({r_, s_}, 4);
    attach({r_}, 2);
    place(s_);
    place(r_);
    EXPECT_THAT(idle(), ElementsAre(2, 4));
}

TEST_F(ModelTest, CarriesAChangeFromTheContainerToWhatIsInsideAndNotBack) {
    const KtDbObjectId outer = define(L"OUTER");
    place(r_, outer);
    attach({r_}, 1);
    attach({outer}, 2);
    place(outer);
    EXPECT_THAT(idle(), ElementsAre(1, 2));
    place(r_, outer);
    EXPECT_THAT(idle(), ElementsAre(1));
}

TEST_F(ModelTest, RecordsReferencesByContainerAscendingErasedOnesIncluded) {
    const KtDbObjectId first = place(r_);
    const KtDbObjectId inside = place(r_, s_);
    const KtDbObjectId last = place(r_);
    ASSERT_EQ(eraseReference(drawing(), first), Orbx::eOk);
    attach({r_}, 1);
    EXPECT_THAT(monitor(r_).references,
                ElementsAre(Pair(space_, ElementsAre(first, last)), Pair(s_, ElementsAre(inside))));
}

TEST_F(ModelTest, RecordsTheAttributesOfAReferenceWhileItIsWatched) {
    const KtDbObjectId reference = place(r_, space_, {{L"A", L"1"}, {L"B", L"2"}});
    const auto attributes = attributesOf(reference);
    attach({r_}, 1);
    EXPECT_THAT(monitor(r_).attributes,
                ElementsAre(Pair(reference, ElementsAre(attributes[0].id, attributes[1].id))));
    model_->detach(&document_, 1);
    EXPECT_THAT(monitor(r_).attributes, IsEmpty());
}

TEST_F(ModelTest, HearsAnEditedAttribute) {
    const KtDbObjectId reference = place(r_, space_, {{L"A", L"1"}});
    attach({r_}, 1);
    ASSERT_EQ(setAttributeText(drawing(), reference, L"A", L"2"), Orbx::eOk);
    EXPECT_TRUE(monitor(r_).changed);
    EXPECT_TRUE(blocks().pendingChanges);
    EXPECT_THAT(idle(), ElementsAre(1));
    EXPECT_FALSE(monitor(r_).changed);
}

TEST_F(ModelTest, DoesNotHearAnAttributeThatCameLater) {
    const KtDbObjectId reference = place(r_);
    attach({r_}, 1);
    KtDbObjectId attribute;
    ASSERT_EQ(appendAttribute(drawing(), reference, L"A", L"1", attribute), Orbx::eOk);
    EXPECT_THAT(idle(), ElementsAre(1));
    EXPECT_THAT(reactorsOn(attribute), IsEmpty());
    ASSERT_EQ(setAttributeText(drawing(), reference, L"A", L"2"), Orbx::eOk);
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, IsOnTheTableTheRecordsAndTheReferencesWhileItWatches) {
    const KtDbObjectId reference = place(r_);
    attach({r_}, 1);
    EXPECT_THAT(reactorsOn(drawing().blockTableId()), ElementsAre(drawing().blockTableId()));
    EXPECT_THAT(reactorsOn(r_), ElementsAre(r_));
    EXPECT_THAT(reactorsOn(reference), ElementsAre(r_));
    model_->detach(&document_, 1);
    EXPECT_THAT(model_->snapshot().reactors, IsEmpty());
}

TEST_F(ModelTest, StartsEverythingWithTheFirstClientAndStopsItWithTheLast) {
    EXPECT_FALSE(model_->snapshot().documents.at(L"plan").blocks.has_value());
    attach({KtDbObjectId(7)}, 1);
    EXPECT_TRUE(blocks().enabled);
    EXPECT_TRUE(blocks().timer->enabled);
    model_->detach(&document_, 99);
    EXPECT_FALSE(blocks().enabled);
    EXPECT_FALSE(blocks().timer->enabled);
}

TEST_F(ModelTest, ANewContainerAndALostOneAreChanges) {
    attach({r_}, 1);
    drawing().setUndoRecording(false); // so that what is erased can be released
    const KtDbObjectId reference = place(r_);
    EXPECT_THAT(idle(), ElementsAre(1));
    ASSERT_EQ(eraseReference(drawing(), reference), Orbx::eOk);
    EXPECT_THAT(idle(), ElementsAre(1));
    ASSERT_GT(drawing().releaseErased(), 0U);
    EXPECT_EQ(update(true, false), Calls{});
    EXPECT_TRUE(monitor(r_).changed);
    EXPECT_THAT(monitor(r_).references, IsEmpty());
}

TEST_F(ModelTest, AReferenceThatIsListedNoMoreIsAChangeEvenWhereOthersStay) {
    drawing().setUndoRecording(false); // so that what is erased can be released
    const KtDbObjectId going = place(r_);
    const KtDbObjectId staying = place(r_);
    attach({r_}, 1);
    ASSERT_EQ(eraseReference(drawing(), going), Orbx::eOk);
    EXPECT_THAT(idle(), ElementsAre(1));
    ASSERT_GT(drawing().releaseErased(), 0U);
    EXPECT_EQ(update(true, true), Calls{1});
    EXPECT_THAT(monitor(r_).references, ElementsAre(Pair(space_, ElementsAre(staying))));
}

TEST_F(ModelTest, DoesNotRecordAnErasedAttribute) {
    const KtDbObjectId reference = place(r_, space_, {{L"A", L"1"}, {L"B", L"2"}});
    const auto attributes = attributesOf(reference);
    ASSERT_EQ(eraseAttribute(drawing(), attributes[0].id), Orbx::eOk);
    attach({r_}, 1);
    EXPECT_THAT(monitor(r_).attributes, ElementsAre(Pair(reference, ElementsAre(attributes[1].id))));
}

TEST_F(ModelTest, LeavesOutAReferenceThatSomebodyHasOpenForWriteAndTakesItForNewAfterwards) {
    const KtDbObjectId reference = place(r_, space_, {{L"A", L"1"}});
    attach({r_}, 1);
    {
        const Opened<KtDbBlockReference> opened(reference, KtDb::kForWrite);
        ASSERT_TRUE(opened);
        EXPECT_EQ(update(true, true), Calls{1}); // the container has lost its only reference
        EXPECT_THAT(monitor(r_).references, IsEmpty());
    }
    EXPECT_EQ(update(true, true), Calls{1});
    const KtDbObjectId attribute = attributesOf(reference).at(0).id;
    EXPECT_THAT(monitor(r_).attributes, ElementsAre(Pair(reference, ElementsAre(attribute, attribute))));
}

TEST_F(ModelTest, KeepsWhatItRecordedOfADefinitionThatSomebodyHasOpenForWrite) {
    const KtDbObjectId reference = place(r_);
    attach({r_}, 1);
    place(r_);
    const Opened<KtDbBlockTableRecord> opened(r_, KtDb::kForWrite);
    ASSERT_TRUE(opened);
    EXPECT_THAT(idle(), IsEmpty());
    EXPECT_THAT(monitor(r_).references, ElementsAre(Pair(space_, ElementsAre(reference))));
}

TEST_F(ModelTest, ARepresentationMetAfterItsDefinitionJoinsIt) {
    ASSERT_EQ(makeDynamic(drawing(), r_), Orbx::eOk);
    attach({r_}, 1);
    KtDbObjectId representation;
    ASSERT_EQ(addRepresentation(drawing(), r_, L"one", representation), Orbx::eOk);
    const KtDbObjectId reference = place(representation);
    EXPECT_THAT(idle(), ElementsAre(1));
    EXPECT_EQ(blocks().monitorOfKey.at(representation), r_);
    EXPECT_THAT(monitor(r_).recordIds, ElementsAre(r_, representation));
    EXPECT_THAT(monitor(r_).references, ElementsAre(Pair(space_, ElementsAre(reference))));
    EXPECT_THAT(reactorsOn(representation), IsEmpty()); // until it is watched anew
}

TEST_F(ModelTest, ARepresentationOlderThanItsDefinitionKeepsAMonitorOfItsOwn) {
    KtDbObjectId older;
    ASSERT_EQ(addAnonymousDefinition(drawing(), L'U', older), Orbx::eOk);
    attach({older}, 1);
    const KtDbObjectId dynamic = define(L"DYNAMIC");
    ASSERT_EQ(makeDynamic(drawing(), dynamic), Orbx::eOk);
    ASSERT_EQ(adoptRepresentation(drawing(), dynamic, L"one", older), Orbx::eOk);
    EXPECT_THAT(idle(), IsEmpty());
    EXPECT_EQ(blocks().monitorOfKey.at(older), older);
    EXPECT_THAT(monitor(dynamic).recordIds, ElementsAre(dynamic, older));
}

TEST_F(ModelTest, ADefinitionBringsItsRepresentationsWithIt) {
    ASSERT_EQ(makeDynamic(drawing(), r_), Orbx::eOk);
    KtDbObjectId representation;
    ASSERT_EQ(addRepresentation(drawing(), r_, L"one", representation), Orbx::eOk);
    attach({representation}, 1);
    EXPECT_EQ(blocks().monitorOfKey.at(representation), r_);
    EXPECT_THAT(monitor(r_).callbacks, ElementsAre(1));
    EXPECT_THAT(reactorsOn(representation), ElementsAre(r_));
}

TEST_F(ModelTest, WatchesNoRepresentationBehindAnErasedOne) {
    ASSERT_EQ(makeDynamic(drawing(), r_), Orbx::eOk);
    KtDbObjectId erased;
    KtDbObjectId behind;
    ASSERT_EQ(addRepresentation(drawing(), r_, L"one", erased), Orbx::eOk);
    ASSERT_EQ(addRepresentation(drawing(), r_, L"two", behind), Orbx::eOk);
    EXPECT_EQ(update(true, false), Calls{});
    ASSERT_EQ(purgeDefinition(drawing(), erased), Orbx::eOk);
    attach({r_}, 1);
    EXPECT_THAT(monitor(r_).recordIds, ElementsAre(r_, erased, behind));
    EXPECT_THAT(reactorsOn(r_), ElementsAre(r_));
    EXPECT_THAT(reactorsOn(erased), IsEmpty());
    EXPECT_THAT(reactorsOn(behind), IsEmpty());
}

TEST_F(ModelTest, KnowsNothingOfADefinitionWhoseRepresentationCannotBeAsked) {
    ASSERT_EQ(makeDynamic(drawing(), r_), Orbx::eOk);
    KtDbObjectId representation;
    ASSERT_EQ(addRepresentation(drawing(), r_, L"one", representation), Orbx::eOk);
    {
        const Opened<KtDbBlockTableRecord> opened(representation, KtDb::kForWrite);
        EXPECT_EQ(update(true, false), Calls{});
        EXPECT_FALSE(blocks().monitorOfKey.contains(r_));
        EXPECT_FALSE(blocks().monitorOfKey.contains(representation));
    }
    EXPECT_EQ(update(true, false), Calls{});
    EXPECT_EQ(blocks().monitorOfKey.at(representation), r_);
}

TEST_F(ModelTest, KeepsTheMonitorOfAnErasedDefinition) {
    const KtDbObjectId reference = place(r_);
    attach({r_}, 1);
    ASSERT_EQ(eraseReference(drawing(), reference), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing(), r_), Orbx::eOk);
    idle();
    EXPECT_THAT(monitor(r_).references, ElementsAre(Pair(space_, ElementsAre(reference))));
    EXPECT_EQ(blocks().monitoredCount, 3); // both layouts and S
}

TEST_F(ModelTest, CountsReferencesThroughOneContainerAndNoDeeper) {
    const KtDbObjectId w = define(L"W");
    const KtDbObjectId v = define(L"V");
    place(w), place(w), place(w);
    place(r_), place(r_, w), place(r_, w);
    place(v, w), place(r_, v);
    attach({r_}, 1);
    const auto graph = model_->snapshot({{L"plan", {{r_, space_}}}}).documents.at(L"plan").blocks->answers;
    EXPECT_EQ(graph.at({r_, space_}).direct, 1U);
    EXPECT_EQ(graph.at({r_, space_}).recursive, 7U);
    EXPECT_EQ(graph.at({r_, space_}).inModelSpaceRecursive, 7U);
    EXPECT_THAT(graph.at({r_, space_}).nested.blocks, UnorderedElementsAre(w, r_));
    EXPECT_THAT(graph.at({r_, space_}).nestedRecursive.blocks, UnorderedElementsAre(w, v, r_));
}

TEST_F(ModelTest, CountsNothingThroughAnErasedContainer) {
    const KtDbObjectId w = define(L"W");
    const KtDbObjectId reference = place(w);
    place(r_, w);
    attach({r_}, 1);
    ASSERT_EQ(eraseReference(drawing(), reference), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing(), w), Orbx::eOk);
    idle();
    const auto graph = model_->snapshot({{L"plan", {{r_, space_}}}}).documents.at(L"plan").blocks->answers;
    EXPECT_EQ(graph.at({r_, space_}).recursive, 0U);
}

TEST_F(ModelTest, SumsInstancesOverTheLayouts) {
    const KtDbObjectId paper = recordByName(drawing(), L"*Paper_Space");
    place(r_), place(r_, paper), place(r_, paper);
    attach({r_}, 1);
    const auto graph = model_->snapshot({{L"plan", {{r_, paper}}}}).documents.at(L"plan").blocks->answers;
    EXPECT_EQ(graph.at({r_, paper}).inModelSpace, 1U);
    EXPECT_EQ(graph.at({r_, paper}).inLayouts, 3U);
}

TEST_F(ModelTest, FilesAReferenceInAnAttachedDrawingsModelSpaceUnderTheRecordThatStandsForIt) {
    KtDbObjectId inside;
    const auto load = [&inside] {
        auto other = std::make_unique<Database>(L"other");
        KtDbObjectId block;
        EXPECT_EQ(addDefinition(*other, L"P", block), Orbx::eOk);
        EXPECT_EQ(insertReference(*other, {block, other->modelSpaceId(), {}, {}, {}}, inside), Orbx::eOk);
        return other;
    };
    KtDbObjectId record;
    ASSERT_EQ(attachDrawing(drawing(), L"OTHER", load, record), Orbx::eOk);
    const KtDbObjectId dependent = recordByName(drawing(), L"OTHER|P");
    place(record), place(record);
    attach({dependent}, 1);
    EXPECT_THAT(monitor(dependent).references, ElementsAre(Pair(record, ElementsAre(inside))));
    const auto graph =
        model_->snapshot({{L"plan", {{dependent, space_}}}}).documents.at(L"plan").blocks->answers;
    EXPECT_EQ(graph.at({dependent, space_}).recursive, 2U);
}

TEST_F(ModelTest, TheRecordOfAnAttachedDrawingOpenedForModifyIsAChange) {
    KtDbObjectId record;
    const auto load = [] { return std::make_unique<Database>(L"other"); };
    ASSERT_EQ(attachDrawing(drawing(), L"OTHER", load, record), Orbx::eOk);
    attach({record}, 1);
    ASSERT_EQ(reloadDrawing(drawing(), record), Orbx::eOk);
    EXPECT_THAT(idle(), ElementsAre(1));
}

TEST_F(ModelTest, ADefinitionOpenedForModifyIsNoChangeByItself) {
    attach({r_}, 1);
    ASSERT_EQ(renameDefinition(drawing(), r_, L"RENAMED"), Orbx::eOk);
    EXPECT_TRUE(monitor(r_).needsUpdate);
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, ACopiedDefinitionIsNoChangeByItself) {
    attach({r_}, 1);
    KtDbObjectId copy;
    ASSERT_EQ(copyDefinition(drawing(), r_, L"COPY", copy), Orbx::eOk);
    EXPECT_TRUE(monitor(r_).needsUpdate);
    EXPECT_FALSE(monitor(r_).changed);
}

TEST_F(ModelTest, DoesNotLookUnforcedOnceTheLastClientIsGone) {
    attach({r_}, 1);
    place(r_);
    model_->detach(&document_, 1);
    EXPECT_TRUE(blocks().rescanNeeded);
    EXPECT_EQ(update(false, true), Calls{});
    EXPECT_THAT(monitor(r_).references, IsEmpty());
}

TEST_F(ModelTest, WhatTheFirstClientsScanFindsIsNoChange) {
    EXPECT_EQ(update(true, false), Calls{});
    place(r_);
    attach({r_}, 1);
    EXPECT_FALSE(blocks().pendingChanges);
    EXPECT_EQ(update(true, true), Calls{});
}

TEST_F(ModelTest, AForcedUpdateLooksEvenWhileNothingIsWatched) {
    EXPECT_EQ(update(true, false), Calls{});
    const KtDbObjectId reference = place(r_);
    EXPECT_EQ(update(false, true), Calls{});
    EXPECT_THAT(monitor(r_).references, IsEmpty());
    EXPECT_EQ(update(true, true), Calls{});
    EXPECT_THAT(monitor(r_).references, ElementsAre(Pair(space_, ElementsAre(reference))));
}

TEST_F(ModelTest, AnUpdateThatDoesNotNotifyLeavesTheMarksToTheNext) {
    attach({r_}, 1);
    place(r_);
    EXPECT_EQ(update(true, false), Calls{});
    EXPECT_TRUE(blocks().pendingChanges);
    EXPECT_THAT(idle(), IsEmpty()); // nothing asks for another look
    EXPECT_EQ(update(true, true), Calls{1});
}

TEST_F(ModelTest, DoesNotTellWhatACallbackChanges) {
    attach({r_}, 1);
    place(r_);
    model_->idleCheckArrives(&document_);
    model_->passes().callbackBegins(1);
    EXPECT_FALSE(monitor(r_).changed);
    ASSERT_EQ(moveReference(drawing(), referencesTo(r_).at(0), {1, 2, 3}), Orbx::eOk);
    EXPECT_TRUE(monitor(r_).changed);
    model_->passes().callbackReturns();
    EXPECT_FALSE(monitor(r_).changed);
    EXPECT_TRUE(blocks().rescanNeeded);
    EXPECT_THAT(play(), IsEmpty());
}

TEST_F(ModelTest, ABlockClientThatThrowsKeepsNoOtherFromItsCallAndTheTimerFromItsRestart) {
    attach({r_}, 1);
    attach({r_}, 2);
    place(r_);
    model_->idleCheckArrives(&document_);
    model_->passes().callbackBegins(1);
    model_->passes().callbackThrows();
    EXPECT_THAT(play(), ElementsAre(1, 2));
    EXPECT_FALSE(blocks().pendingChanges);
    EXPECT_EQ(blocks().timer->startTick, 0U);
}

TEST_F(ModelTest, AnIdleClientThatThrowsEndsTheRound) {
    model_->attachTimer(&document_, 1, 0, true);
    model_->attachTimer(&document_, 2, 0, true);
    model_->idleCheckArrives(&document_);
    model_->passes().callbackBegins(1);
    model_->passes().callbackThrows();
    EXPECT_THAT(play(), ElementsAre(1));
    EXPECT_THAT(idle(), ElementsAre(1, 2));
}

TEST_F(ModelTest, AnUpdateInsideACallbackCallsItsOwnClientsFirst) {
    attach({r_}, 1);
    attach({r_}, 2);
    place(r_);
    model_->idleCheckArrives(&document_);
    model_->passes().callbackBegins(1);
    place(r_);
    model_->update(&document_, true, true);
    model_->passes().callbackBegins(1);
    model_->passes().callbackReturns();
    model_->passes().callbackBegins(2);
    model_->passes().callbackReturns();
    model_->passes().callbackReturns();
    EXPECT_THAT(play(), ElementsAre(1, 1, 2, 2));
}

TEST_F(ModelTest, CallsIdleClientsAtTheirIntervalOnly) {
    model_->attachTimer(&document_, 1, 100, true);
    EXPECT_THAT(idle(), ElementsAre(1));
    host_.clock().advance(99);
    EXPECT_THAT(idle(), IsEmpty());
    host_.clock().advance(1);
    EXPECT_THAT(idle(), ElementsAre(1));
}

TEST_F(ModelTest, TheIntervalOfTheLastCallHoldsForAllAndANegativeOneIsNone) {
    model_->attachTimer(&document_, 1, 100, true);
    idle();
    model_->attachTimer(&document_, 2, 0xFFFFFFFF, false);
    EXPECT_THAT(idle(), ElementsAre(1));
    EXPECT_EQ(model_->snapshot().documents.at(L"plan").idleClients->timer.interval, 0U);
}

TEST_F(ModelTest, AnIdleClientAddedMeanwhileIsCalledIfItsTurnIsStillToCome) {
    model_->attachTimer(&document_, 2, 0, true);
    model_->idleCheckArrives(&document_);
    model_->passes().callbackBegins(2);
    model_->attachTimer(&document_, 1, 0, true);
    model_->attachTimer(&document_, 3, 0, true);
    model_->passes().callbackReturns();
    EXPECT_THAT(play(), ElementsAre(2, 3));
}

TEST_F(ModelTest, ChecksNothingWhileInputWaits) {
    attach({r_}, 1);
    place(r_);
    document_.setPendingInputCount(1);
    EXPECT_THAT(idle(), IsEmpty());
    document_.setPendingInputCount(0);
    EXPECT_THAT(idle(), ElementsAre(1));
}

TEST_F(ModelTest, ChecksNothingWhileADialogIsOpen) {
    attach({r_}, 1);
    place(r_);
    document_.setDialogOpen(true);
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, ChecksNothingWhileTheDocumentIsLocked) {
    attach({r_}, 1);
    place(r_);
    host_.documents().lock(document_, KtAp::kRead, L"palette");
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, ChecksNothingWhileACommandRunsInAnotherDocument) {
    attach({r_}, 1);
    place(r_);
    Document& other = host_.documents().create(L"other", std::make_unique<Database>(L"other"));
    const auto checkMeanwhile = [this](Document&) {
        host_.documents().setCurrent(&document_);
        EXPECT_THAT(idle(), IsEmpty());
        return CommandResult::done;
    };
    EXPECT_EQ(host_.documents().runCommand(other, L"command", checkMeanwhile).result, CommandResult::done);
    EXPECT_THAT(idle(), ElementsAre(1));
}

TEST_F(ModelTest, ChecksNothingInADocumentThatIsNotCurrent) {
    attach({r_}, 1);
    place(r_);
    host_.documents().create(L"other", std::make_unique<Database>(L"other"));
    EXPECT_THAT(idle(), IsEmpty());
}

TEST_F(ModelTest, ExpectsAnIdleCheckForEveryCommandThatEndsInTheCurrentDocument) {
    host_.documents().create(L"other", std::make_unique<Database>(L"other"));
    const auto nothing = [](Document&) { return CommandResult::done; };
    EXPECT_EQ(host_.documents().runCommand(document_, L"first", nothing).result, CommandResult::done);
    host_.documents().setCurrent(&document_);
    EXPECT_EQ(host_.documents().runCommand(document_, L"second", nothing).result, CommandResult::done);
    EXPECT_THAT(model_->snapshot().idleChecks, ElementsAre(L"plan"));
}

TEST_F(ModelTest, LeavesNothingOnADrawingWhenItsDocumentCloses) {
    attach({r_}, 1);
    place(r_);
    idle();
    ASSERT_TRUE(host_.documents().close(document_));
    EXPECT_EQ(host_.report().findings, std::vector<std::string>());
}

TEST_F(ModelTest, LeavesNothingOnADrawingAtItsEnd) {
    attach({r_}, 1);
    place(r_);
    idle();
    model_.reset();
    EXPECT_THAT(attachedReactors(), IsEmpty());
}
