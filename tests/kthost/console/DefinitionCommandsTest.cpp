#include "kthost/console/ObjectNames.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/UndoHistory.h"
#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

class DefinitionCommands : public ConsoleTest {
protected:
    KtDbObjectId block(const wchar_t* name) { return recordByName(drawing(), name); }
};

TEST_F(DefinitionCommands, RedefineFillsABlockWithWhatLiesInAnother) {
    run("define A");
    run("define B");
    run("insert R 1,1 in A Reference=R7");
    run("insert R 1,1 in A Reference=R8");
    run("redefine B as A");
    EXPECT_EQ(referencesIn(block(L"B")).size(), 2U);
}

TEST_F(DefinitionCommands, RedefineEmptiesABlock) {
    run("define A");
    run("insert R 1,1 in A Reference=R7");
    run("redefine A");
    EXPECT_TRUE(referencesIn(block(L"A")).empty());
}

TEST_F(DefinitionCommands, RedefineRefusesABlockThatWouldContainItself) {
    run("define A");
    run("insert R 1,1 in A");
    EXPECT_THAT(failure("redefine R as A"), HasSubstr("a block would contain itself"));
}

TEST_F(DefinitionCommands, RenameGivesABlockAnotherName) {
    const KtDbObjectId before = block(L"R");
    run("rename R Resistor");
    EXPECT_EQ(block(L"Resistor"), before);
    EXPECT_TRUE(block(L"R").isNull());
}

TEST_F(DefinitionCommands, RenameRefusesANameThatIsTaken) {
    run("define A");
    EXPECT_EQ(failure("rename R A"), "'R' cannot be renamed: the name is taken");
}

TEST_F(DefinitionCommands, LayoutMakesALayout) {
    run("layout Sheet2");
    EXPECT_THAT(records(drawing(), true), testing::Contains(block(L"Sheet2")));
}

TEST_F(DefinitionCommands, AnonymousBlocksAreNumbered) {
    EXPECT_EQ(run("anonymous U"), "defined *U1\n");
    EXPECT_EQ(run("anonymous U"), "defined *U2\n");
}

TEST_F(DefinitionCommands, AnonymousRefusesWhatIsNoLetter) {
    EXPECT_THAT(failure("anonymous u"), HasSubstr("from A to Z"));
    EXPECT_THAT(failure("anonymous UV"), HasSubstr("from A to Z"));
}

TEST_F(DefinitionCommands, DynamicBlocksAreRepresentedByNewRecords) {
    run("dynamic R");
    EXPECT_EQ(run("represent R left"), "*U1 represents R as left\n");
    EXPECT_EQ(representation(block(L"R"), L"left"), block(L"*U1"));
}

TEST_F(DefinitionCommands, DynamicBlocksAreRepresentedByRecordsThatAreThere) {
    run("anonymous U");
    run("dynamic R");
    run("represent R left by *U1");
    EXPECT_EQ(representedDefinition(block(L"*U1")), block(L"R"));
}

TEST_F(DefinitionCommands, RepresentRefusesABlockThatIsNotDynamic) {
    EXPECT_NE(failure("represent R left"), "");
}

TEST_F(DefinitionCommands, ForgetLetsGoOfWhatIsErased) {
    run("insert R 1,1 Reference=R7");
    const std::string handle = handleText(handleOf(referencesByDesignator(drawing(), L"R7").at(0)));
    run("erase R7");
    run("forget");
    EXPECT_NE(failure("restore " + handle), "");
    EXPECT_EQ(drawing().history().undoable(), 0U);
}

TEST_F(DefinitionCommands, ChangesAreNotKeptWhileRecordingIsOff) {
    const std::size_t steps = drawing().history().undoable();
    run("recording off");
    run("define A");
    run("recording on");
    EXPECT_EQ(drawing().history().undoable(), steps);
    run("define B");
    EXPECT_EQ(drawing().history().undoable(), steps + 1);
}

} // namespace

} // namespace kthost
