#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

class ConsoleCommands : public ConsoleTest {};

TEST_F(ConsoleCommands, ALineWithoutWordsDoesNothing) {
    EXPECT_EQ(run("   # only a comment"), "");
}

TEST_F(ConsoleCommands, AnUnknownCommandIsRefused) {
    EXPECT_EQ(failure("frobnicate"), "there is no command 'frobnicate'; 'help' lists them");
}

TEST_F(ConsoleCommands, WrongWordsAreAnsweredWithTheUsage) {
    EXPECT_EQ(failure("move R7"), "there is no reference 'R7'");
    EXPECT_THAT(failure("move"), HasSubstr("usage: move REF X,Y"));
}

TEST_F(ConsoleCommands, DocumentsAreOpenedChosenAndClosed) {
    run("new other");
    EXPECT_THAT(run("list documents"), HasSubstr("other     0 references  current"));
    run("current plan");
    run("close other");
    EXPECT_THAT(run("list documents"), HasSubstr("1 document\n"));
}

TEST_F(ConsoleCommands, AClosedDocumentsPlaceIsTakenByTheOneBefore) {
    run("new other");
    run("close");
    EXPECT_THAT(run("list documents"), HasSubstr("plan      0 references  current"));
}

TEST_F(ConsoleCommands, WithoutADocumentEditsAreRefused) {
    run("close");
    EXPECT_EQ(failure("define Q"), "no document is open");
}

TEST_F(ConsoleCommands, ADocumentsNameIsTakenOnce) {
    EXPECT_NE(failure("new plan"), "");
}

TEST_F(ConsoleCommands, ADocumentCanBeWithoutADrawing) {
    run("new blank without drawing");
    EXPECT_EQ(failure("define Q"), "the document has no drawing");
    EXPECT_EQ(host_.documents().currentDocument()->database(), nullptr);
}

TEST_F(ConsoleCommands, AnAbandonedDocumentIsGoneAndTheOneBeforeIsCurrent) {
    run("abandon other");
    EXPECT_EQ(host_.documents().documents().size(), 1U);
    EXPECT_EQ(host_.documents().currentDocument()->name(), std::wstring(L"plan"));
}

TEST_F(ConsoleCommands, NothingIsAbandonedInTheMiddleOfACommand) {
    EXPECT_NE(failure("together \"abandon other\""), "");
    EXPECT_EQ(host_.documents().documents().size(), 1U);
}

TEST_F(ConsoleCommands, OpeningAFileThatIsNotThereIsRefusedAndOpensNothing) {
    EXPECT_THAT(failure("open nowhere.kicad_sch"), HasSubstr("nowhere.kicad_sch"));
    EXPECT_EQ(host_.documents().documents().size(), 1U);
}

TEST_F(ConsoleCommands, DefineRefusesANameThatIsTaken) {
    EXPECT_EQ(failure("define R"), "'R' cannot be defined: the name is taken");
}

TEST_F(ConsoleCommands, DefineCopiesWhatABlockHolds) {
    run("define Sheet");
    run("insert R 1,1 in Sheet Reference=R7");
    run("define Copy from Sheet");
    EXPECT_EQ(referencesIn(recordByName(drawing(), L"Copy")).size(), 1U);
}

TEST_F(ConsoleCommands, PurgeRefusesABlockThatIsReferredTo) {
    run("insert R 1,1");
    EXPECT_EQ(failure("purge R"), "'R' cannot be purged: references to it are left");
    run("erase @last");
    run("purge R");
    EXPECT_TRUE(recordByName(drawing(), L"R").isNull());
}

TEST_F(ConsoleCommands, UndoAndRedoTakeSeveralSteps) {
    run("insert R 1,1 Reference=R1");
    run("insert R 1,1 Reference=R2");
    const std::wstring after = dump();
    EXPECT_EQ(run("undo 2"), "undone insert, insert\n");
    EXPECT_TRUE(referencesIn(drawing().modelSpaceId()).empty());
    EXPECT_EQ(run("redo 2"), "redone insert, insert\n");
    EXPECT_EQ(dump(), after);
}

TEST_F(ConsoleCommands, UndoOfMoreStepsThanThereAreChangesNothing) {
    run("insert R 1,1 Reference=R1");
    const std::wstring before = dump();
    EXPECT_EQ(failure("undo 3"), "2 steps can be undone");
    EXPECT_EQ(dump(), before);
}

TEST_F(ConsoleCommands, AFailedCommandLeavesNoStepBehind) {
    EXPECT_NE(failure("define R"), "");
    EXPECT_EQ(run("undo"), "undone define\n"); // the fixture's
    EXPECT_NE(failure("undo"), "");
}

TEST_F(ConsoleCommands, ATableIsDrawnThroughAnAnonymousBlock) {
    EXPECT_THAT(run("table Legend 5,5 3 2"), HasSubstr("*T1"));
    EXPECT_THAT(run("list tables"), HasSubstr("Legend  *T1    *Model_Space  5,5       3     2"));
}

TEST_F(ConsoleCommands, TypingSetsWhetherInputWaits) {
    run("typing on");
    EXPECT_NE(GetInputState(), 0);
    run("typing off");
    EXPECT_EQ(GetInputState(), 0);
}

TEST_F(ConsoleCommands, TickMovesTheClock) {
    host_.clock().set(100);
    run("tick 250");
    EXPECT_EQ(GetTickCount(), 350U);
}

TEST_F(ConsoleCommands, QuitEndsTheSession) {
    run("quit");
    EXPECT_TRUE(console_.session().isQuitting());
}

TEST_F(ConsoleCommands, HelpShowsEveryCommand) {
    EXPECT_THAT(run("help"), HasSubstr("restore REF [TAG]\n"));
    EXPECT_EQ(run("help undo"), "undo [N]\n");
    EXPECT_NE(failure("help frobnicate"), "");
}

TEST_F(ConsoleCommands, ListsAreInAStableOrder) {
    run("insert R 1.5,2 Reference=R2 Value=1k");
    run("insert R 3,4 Reference=R1 Value=2k");
    const std::string list = run("list references");
    EXPECT_LT(list.find("R2"), list.find("R1"));
    EXPECT_THAT(list, HasSubstr("1.5,2"));
    EXPECT_THAT(list, HasSubstr("2 references\n"));
}

TEST_F(ConsoleCommands, ListsOfOneReferenceOrBlock) {
    run("define Q");
    run("insert R 1,1 Reference=R1 Value=1k");
    run("insert Q 1,1 Reference=Q1 Value=BC547");
    EXPECT_EQ(run("list attributes Q1").find("R1"), std::string::npos);
    EXPECT_EQ(run("list references Q").find("R1"), std::string::npos);
    EXPECT_THAT(run("list blocks Q"), HasSubstr("1 block\n"));
}

TEST_F(ConsoleCommands, MessagesArePumpedAfterEachLine) {
    const UINT message = RegisterWindowMessageW(L"TEST");
    PostMessageW(host_.window().handle(), message, 0, 0);
    run("typing off");
    EXPECT_TRUE(host_.loop().queue().empty());
}

} // namespace

} // namespace kthost
