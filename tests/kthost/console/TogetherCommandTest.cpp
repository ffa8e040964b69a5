#include "kthost/database/UndoHistory.h"
#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

bool succeed(KtApDocument* /*document*/, const KtArray<const wchar_t*>& /*words*/) {
    return ktedCommandActive();
}

bool giveUp(KtApDocument* /*document*/, const KtArray<const wchar_t*>& /*words*/) {
    ktedFail(L"there is no time");
    return false;
}

class TogetherCommand : public ConsoleTest {};

TEST_F(TogetherCommand, ItsLinesAreOneStep) {
    const std::wstring before = dump();
    run(R"(together "insert R 1,1 Reference=R7" "copy R7 2,2")");
    run("undo");
    EXPECT_EQ(dump(), before);
}

TEST_F(TogetherCommand, ALineSeesWhatThoseBeforeDid) {
    run(R"(together "insert R 1,1 Reference=R7 Value=1k" "set @last Value ""2 k""")");
    EXPECT_THAT(dump(), HasSubstr(L"2 k"));
}

TEST_F(TogetherCommand, ALineThatCannotBeDoneTakesAllBack) {
    const std::wstring before = dump();
    EXPECT_EQ(failure("together \"insert R 1,1 Reference=R7\" \"erase R8\""), "there is no reference 'R8'");
    EXPECT_EQ(referencesByDesignator(drawing(), L"R7").size(), 0U);
    EXPECT_EQ(drawing().history().undoable(), 1U) << "the definition alone";
}

TEST_F(TogetherCommand, ALineThatCannotBeDoneLeavesWhatCanBeRedone) {
    run("insert R 1,1 Reference=R7");
    run("undo");
    EXPECT_NE(failure("together \"insert R 1,1 Reference=R8\" \"erase R9\""), "");
    EXPECT_EQ(failure("redo"), "");
    EXPECT_EQ(referencesByDesignator(drawing(), L"R7").size(), 1U);
}

TEST_F(TogetherCommand, CommandsOfModulesArePartOfIt) {
    host_.commands().add(L"active", L"active", &succeed);
    EXPECT_EQ(failure("together active \"define C\""), "");
}

TEST_F(TogetherCommand, SaysWhyACommandOfAModuleFailed) {
    host_.commands().add(L"giveup", L"giveup", &giveUp);
    EXPECT_EQ(failure("together \"define C\" giveup"), "there is no time");
    EXPECT_TRUE(recordByName(drawing(), L"C").isNull());
}

TEST_F(TogetherCommand, CannotBeOneOfItsOwnLines) {
    EXPECT_THAT(failure("together \"together help\""), HasSubstr("run together"));
}

TEST_F(TogetherCommand, LeavesTheNextLineACommandOfItsOwn) {
    EXPECT_NE(failure("together \"erase R8\""), "");
    run("define C");
    run("define D");
    EXPECT_EQ(drawing().history().undoName(), L"define");
    EXPECT_EQ(drawing().history().undoable(), 3U);
}

TEST_F(TogetherCommand, NeedsALine) {
    EXPECT_THAT(failure("together"), HasSubstr("LINE is missing"));
}

TEST_F(TogetherCommand, CannotWalkTheStepsOfItsDrawing) {
    EXPECT_THAT(failure("together \"undo\""), HasSubstr("not now"));
    EXPECT_THAT(failure("together \"forget\""), HasSubstr("a step is being kept"));
}

TEST_F(TogetherCommand, KeepsChangesForUndoTillItsEnd) {
    const std::wstring before = dump();
    EXPECT_THAT(failure("together \"recording off\" \"define C\" \"recording on\""), HasSubstr("not now"));
    EXPECT_EQ(dump(), before);
}

TEST_F(TogetherCommand, GoesOnInTheDocumentThatBecomesCurrent) {
    run("new other");
    run(R"(together "current plan" "define C")");
    EXPECT_EQ(host_.documents().currentDocument()->name(), std::wstring(L"plan"));
    EXPECT_FALSE(recordByName(drawing(), L"C").isNull());
}

TEST_F(TogetherCommand, ALineThatCannotBeDoneTakesBackWhatWasDoneInOtherDrawings) {
    run("new other");
    const std::wstring before = dump();
    run("current plan");
    EXPECT_NE(failure("together \"current other\" \"define C\" \"erase R8\""), "");
    EXPECT_EQ(host_.documents().currentDocument()->name(), std::wstring(L"other"));
    EXPECT_EQ(dump(), before);
    EXPECT_EQ(drawing().history().undoable(), 0U);
}

TEST_F(TogetherCommand, ItsLinesAreOneStepInEachDrawing) {
    run("new other");
    run("current plan");
    run(R"(together "define B" "current other" "define C" "define D")");
    EXPECT_EQ(drawing().history().undoable(), 1U);
    EXPECT_EQ(failure("undo"), "");
    EXPECT_TRUE(recordByName(drawing(), L"C").isNull());
}

TEST_F(TogetherCommand, CannotWalkTheStepsOfAnotherDrawing) {
    run("new other");
    run("define C");
    run("current plan");
    EXPECT_THAT(failure("together \"current other\" \"undo\""), HasSubstr("not now"));
}

} // namespace

} // namespace kthost
