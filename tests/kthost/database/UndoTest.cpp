#include "kthost/database/BlockReference.h"
#include "tests/kthost/database/DrawingTest.h"

namespace kthost {

namespace {

using Ids = std::vector<KtDbObjectId>;

class Undo : public DrawingTest {
protected:
    UndoHistory& history() { return drawing.history(); }

    KtDbObjectId space() const { return drawing.modelSpaceId(); }
};

TEST_F(Undo, HasNothingToTakeAtFirst) {
    EXPECT_EQ(history().undo(), Orbx::eNothingToUndo);
    EXPECT_EQ(history().redo(), Orbx::eNothingToRedo);
}

TEST_F(Undo, KeepsNoStepWithoutChanges) {
    step([] {});
    EXPECT_EQ(history().undoable(), 0U);
}

TEST_F(Undo, KnowsItsStepsByName) {
    history().begin(L"insert");
    place();
    ASSERT_EQ(history().end(), Orbx::eOk);
    EXPECT_EQ(history().undoName(), L"insert");
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(history().redoName(), L"insert");
}

TEST_F(Undo, IsRefusedInsideAStep) {
    history().begin(L"step");
    EXPECT_EQ(history().undo(), Orbx::eNotNow);
    EXPECT_EQ(history().redo(), Orbx::eNotNow);
    EXPECT_EQ(history().discard(), Orbx::eNotNow);
    EXPECT_EQ(drawing.releaseErased(), 0U);
    EXPECT_EQ(history().end(), Orbx::eOk);
    EXPECT_EQ(history().end(), Orbx::eNotNow);
    EXPECT_EQ(history().cancel(), Orbx::eNotNow);
}

TEST_F(Undo, OfAnInsertionTellsTheContainerTheReferenceAndItsAttributes) {
    KtDbObjectId id;
    step([&] { id = place({{L"A", L"a"}}); });
    const KtDbObjectId value = attribute(id);
    EventLog log;
    for (const KtDbObjectId each : {space(), id, value}) {
        watch(each, log);
    }
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(
        log.take(),
        Events({event("openedForModify", id), event("openedForModify", value), event("unappended", value),
                event("modified", value), event("subObjectModified", id, value), event("objectClosed", value),
                event("modified", id), event("subObjectModified", space(), id), event("objectClosed", id),
                event("openedForModify", space()), event("openedForModify", id), event("unappended", id),
                event("modified", id), event("subObjectModified", space(), id), event("objectClosed", id),
                event("modified", space()), event("objectClosed", space())}));
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(value.isErased());
    EXPECT_EQ(living(resistor), Ids());
}

TEST_F(Undo, OfAnInsertionIsDoneAgainByReappending) {
    KtDbObjectId id;
    step([&] { id = place(); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EventLog log;
    watch(space(), log);
    watch(id, log);
    ASSERT_EQ(history().redo(), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", space()), event("openedForModify", id),
                                  event("reappended", id), event("modified", id),
                                  event("subObjectModified", space(), id), event("objectClosed", id),
                                  event("modified", space()), event("objectClosed", space())}));
    EXPECT_EQ(living(resistor), Ids({id}));
}

TEST_F(Undo, OfAnEditOpensForModifyAndSaysModifyUndone) {
    const KtDbObjectId id = place({{L"A", L"before"}});
    step([&] { EXPECT_EQ(setAttributeText(drawing, id, L"A", L"after"), Orbx::eOk); });
    EventLog log;
    watch(attribute(id), log);
    const Events expected = {event("openedForModify", attribute(id)), event("modifyUndone", attribute(id)),
                             event("modified", attribute(id)), event("objectClosed", attribute(id))};
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(log.take(), expected);
    EXPECT_EQ(attributesOf(id)[0].text, L"before");
    ASSERT_EQ(history().redo(), Orbx::eOk);
    EXPECT_EQ(log.take(), expected);
    EXPECT_EQ(attributesOf(id)[0].text, L"after");
}

TEST_F(Undo, OfAnEraseSaysUnerased) {
    const KtDbObjectId id = place();
    step([&] { EXPECT_EQ(eraseReference(drawing, id), Orbx::eOk); });
    EventLog log;
    watch(id, log);
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", id), event("unerased", id), event("modifyUndone", id),
                      event("modified", id), event("objectClosed", id)}));
    EXPECT_EQ(living(resistor), Ids({id}));
    ASSERT_EQ(history().redo(), Orbx::eOk);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", id), event("erased", id), event("modifyUndone", id),
                      event("modified", id), event("objectClosed", id)}));
    EXPECT_EQ(erased(resistor), Ids({id}));
}

TEST_F(Undo, OfExtendedDataSaysSo) {
    const KtDbObjectId id = place();
    step([&] { EXPECT_EQ(setXData(drawing, id, L"A", {{KtDbXDataItem::kInteger, 1, L""}}), Orbx::eOk); });
    EventLog log;
    watch(id, log);
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", id), event("modifyUndone", id), event("modified", id),
                      event("modifiedXData", id), event("objectClosed", id)}));
    KtArray<KtDbXDataItem> items;
    EXPECT_EQ(open(id, KtDb::kForRead)->getXData(L"A", items), Orbx::eKeyNotFound);
}

TEST_F(Undo, OfADefinitionMakesItsNameFree) {
    KtDbObjectId id;
    step([&] { id = define(L"C"); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_TRUE(recordByName(drawing, L"C").isNull());
    ASSERT_EQ(history().redo(), Orbx::eOk);
    EXPECT_EQ(recordByName(drawing, L"C"), id);
}

TEST_F(Undo, OfARenamingGivesTheNameBack) {
    step([&] { EXPECT_EQ(renameDefinition(drawing, resistor, L"Resistor"), Orbx::eOk); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(recordByName(drawing, L"R"), resistor);
    EXPECT_TRUE(recordByName(drawing, L"Resistor").isNull());
}

TEST_F(Undo, ChangesNothingWhenAnObjectConcernedIsOpen) {
    const KtDbObjectId first = place();
    const KtDbObjectId second = place();
    step([&] {
        EXPECT_EQ(moveReference(drawing, first, {1, 0, 0}), Orbx::eOk);
        EXPECT_EQ(eraseReference(drawing, second), Orbx::eOk);
    });
    KtDbObject* held = open(first, KtDb::kForRead);
    EXPECT_EQ(history().undo(), Orbx::eWasOpenForRead);
    EXPECT_TRUE(second.isErased());
    close(held);
    held = open(space(), KtDb::kForNotify);
    EXPECT_EQ(history().undo(), Orbx::eWasOpenForNotify);
    EXPECT_EQ(history().undoable(), 1U);
    close(held);
    EXPECT_EQ(history().undo(), Orbx::eOk);
    EXPECT_FALSE(second.isErased());
}

TEST_F(Undo, ForgetsWhatCouldBeRedoneAtTheFirstChangeAndNotBefore) {
    KtDbObjectId id;
    step([&] { id = place(); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    step([] {});
    EXPECT_EQ(history().redoable(), 1U);
    EventLog log;
    watch(id, log);
    step([&] { define(L"C"); });
    EXPECT_EQ(history().redoable(), 0U);
    EXPECT_EQ(log.take(), Events({event("goodbye", id)}));
    EXPECT_TRUE(isReleased(id));
    EXPECT_EQ(erased(resistor), Ids());
}

TEST_F(Undo, ReleasesAForgottenObjectThatWasOpenOnceItIsClosed) {
    KtDbObjectId id;
    step([&] { id = place(); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    KtDbObject* held = open(id, KtDb::kForNotify);
    step([&] { define(L"C"); });
    EXPECT_FALSE(isReleased(id));
    close(held);
    step([&] { define(L"D"); });
    EXPECT_TRUE(isReleased(id));
}

TEST_F(Undo, DoesNotRestoreWhatItsRedoWouldReappend) {
    KtDbObjectId id;
    step([&] { id = place(); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(restoreReference(drawing, id), Orbx::eNotInDatabase);
    EXPECT_EQ(history().redoable(), 1U);
}

TEST_F(Undo, RollsACancelledStepBack) {
    const KtDbObjectId before = place({{L"A", L"a"}});
    history().begin(L"step");
    const KtDbObjectId id = place();
    EXPECT_EQ(setAttributeText(drawing, before, L"A", L"b"), Orbx::eOk);
    EXPECT_EQ(history().cancel(), Orbx::eOk);
    EXPECT_EQ(attributesOf(before)[0].text, L"a");
    EXPECT_TRUE(isReleased(id));
    EXPECT_EQ(history().undoable(), 0U);
    EXPECT_EQ(history().redoable(), 0U);
}

TEST_F(Undo, KeepsWhatCanBeRedoneWhenAStepIsCancelled) {
    KtDbObjectId id;
    step([&] { id = place(); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    history().begin(L"step");
    define(L"C");
    EXPECT_EQ(history().cancel(), Orbx::eOk);
    EXPECT_EQ(history().redo(), Orbx::eOk);
    EXPECT_FALSE(id.isErased());
}

TEST_F(Undo, RollsTheWholeOuterStepBackWhenAnInnerOneIsCancelled) {
    history().begin(L"outer");
    const KtDbObjectId id = place();
    history().begin(L"inner");
    EXPECT_EQ(history().cancel(), Orbx::eOk);
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(history().end(), Orbx::eOk);
    EXPECT_TRUE(id.isErased());
}

TEST_F(Undo, KeepsACancelledStepThatCannotBeRolledBack) {
    history().begin(L"step");
    const KtDbObjectId id = place();
    KtDbObject* held = open(id, KtDb::kForRead);
    EXPECT_EQ(history().cancel(), Orbx::eWasOpenForRead);
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(history().undoable(), 1U);
    close(held);
    EXPECT_EQ(history().undo(), Orbx::eOk);
    EXPECT_TRUE(id.isErased());
}

TEST_F(Undo, TakesAChangeOutsideOfStepsWithTheLatestStep) {
    const KtDbObjectId id = place();
    step([&] { define(L"C"); });
    ASSERT_EQ(moveReference(drawing, id, {1, 0, 0}), Orbx::eOk);
    EXPECT_EQ(history().undoable(), 1U);
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(openAs<KtDbBlockReference>(id, KtDb::kForRead)->position(), KtGePoint3d());
}

TEST_F(Undo, DoesNotTakeAChangeBelowTheFirstStep) {
    const KtDbObjectId id = place();
    EXPECT_EQ(history().undo(), Orbx::eNothingToUndo);
    EXPECT_FALSE(id.isErased());
}

TEST_F(Undo, DoesNotTakeAChangeMadeWhileRecordingIsOff) {
    const KtDbObjectId id = place({{L"A", L"a"}});
    step([&] { EXPECT_EQ(moveReference(drawing, id, {1, 0, 0}), Orbx::eOk); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_TRUE(drawing.setUndoRecording(false));
    EXPECT_EQ(setAttributeText(drawing, id, L"A", L"b"), Orbx::eOk);
    EXPECT_FALSE(drawing.setUndoRecording(true));
    EXPECT_EQ(history().redoable(), 1U);
    ASSERT_EQ(history().redo(), Orbx::eOk);
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(attributesOf(id)[0].text, L"b");
}

TEST_F(Undo, ReleasesWhatTheStepsBeyondItsLimitErased) {
    const KtDbObjectId id = place({{L"A", L"a"}});
    step([&] { EXPECT_EQ(setAttributeText(drawing, id, L"A", L"b"), Orbx::eOk); });
    step([&] { EXPECT_EQ(eraseReference(drawing, id), Orbx::eOk); });
    step([&] { define(L"C"); });
    history().setLimit(2);
    EXPECT_EQ(history().undoable(), 2U);
    EXPECT_FALSE(isReleased(id));
    history().setLimit(1);
    EXPECT_TRUE(isReleased(id));
    EXPECT_EQ(history().undo(), Orbx::eOk);
}

TEST_F(Undo, KeepsAnErasedOwnerWhileAStepMentionsWhatItOwns) {
    const KtDbObjectId id = place({{L"A", L"a"}});
    const KtDbObjectId value = attribute(id);
    step([&] { EXPECT_EQ(eraseReference(drawing, id), Orbx::eOk); });
    step([&] {
        EXPECT_EQ(setXData(drawing, value, L"APP", {{KtDbXDataItem::kInteger, 1, L""}}), Orbx::eOk);
    });
    history().setLimit(1);
    EXPECT_FALSE(isReleased(id));
    step([&] { define(L"C"); });
    EXPECT_TRUE(isReleased(id));
    EXPECT_TRUE(isReleased(value));
}

TEST_F(Undo, ReleasesErasedObjectsWhenTheHistoryIsDiscarded) {
    const KtDbObjectId id = place();
    step([&] { EXPECT_EQ(eraseReference(drawing, id), Orbx::eOk); });
    ASSERT_EQ(history().discard(), Orbx::eOk);
    EXPECT_TRUE(isReleased(id));
    EXPECT_EQ(history().undo(), Orbx::eNothingToUndo);
}

TEST_F(Undo, CountsWhatOnlyTheHistoryKeptAmongTheReleased) {
    const KtDbObjectId kept = place({{L"Value", L"4k7"}});
    ASSERT_EQ(eraseReference(drawing, place()), Orbx::eOk); // in no step
    step([&] { EXPECT_EQ(eraseReference(drawing, kept), Orbx::eOk); });
    EXPECT_EQ(drawing.releaseErased(), 3U); // with the attribute
}

TEST_F(Undo, IsRefusedFromInsideItsOwnNotifications) {
    const KtDbObjectId id = place();
    step([&] { EXPECT_EQ(moveReference(drawing, id, {1, 0, 0}), Orbx::eOk); });
    EventLog log;
    watch(id, log);
    Orbx::ErrorStatus inside = Orbx::eOk;
    log.hook = [&](const std::string&) { inside = history().undo(); };
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(inside, Orbx::eNotNow);
}

TEST_F(Undo, OfAPurgeBringsContentsAndNameBack) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId inner = place(resistor, outer);
    step([&] { EXPECT_EQ(purgeDefinition(drawing, outer), Orbx::eOk); });
    ASSERT_EQ(history().undo(), Orbx::eOk);
    EXPECT_EQ(recordByName(drawing, L"Outer"), outer);
    EXPECT_EQ(living(resistor), Ids({inner}));
}

} // namespace

} // namespace kthost
