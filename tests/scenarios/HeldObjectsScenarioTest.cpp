#include "kthost/console/ObjectNames.h"
#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// A drawing with two resistors and a list of them in a file, while somebody keeps objects of it open.
class HeldObjects : public ScenarioTest {
protected:
    void SetUp() override {
        ScenarioTest::SetUp();
        loadAll();
        run("new plan");
        run("define R");
        run("insert R 1,1 Reference=R1 Value=1k");
        run("insert R 2,2 Reference=R2 Value=2k");
    }

    /// A command that changes nothing, and the idle check behind it.
    std::string idle() { return run("parts heartbeat off"); }

    void list() { run("parts R to " + inFolder("list.csv")); }

    /// Gives the table's handle.
    std::string listInTable() {
        run("parts R as table 5,5");
        return handleText(handleOf(referencesTo(recordByName(drawing(), L"*T1")).at(0)));
    }
};

TEST_F(HeldObjects, KeepTheListAsItWas) {
    list();
    const std::string before = read("list.csv");
    run("hold write R1");
    run("set R2 Value 3k");
    EXPECT_EQ(read("list.csv"), before);
    EXPECT_THAT(run("parts show"), HasSubstr("R1"));
}

TEST_F(HeldObjects, AreToldOfOnce) {
    list();
    run("hold write R1");
    EXPECT_THAT(run("set R2 Value 3k"), HasSubstr("parts plan: the list cannot be read from the drawing"));
    EXPECT_THAT(run("set R2 Value 4k"), Not(HasSubstr("parts plan")));
    EXPECT_THAT(idle(), Not(HasSubstr("parts plan")));
}

TEST_F(HeldObjects, AreToldOfWhenTheListIsShown) {
    list();
    run("hold write R1");
    EXPECT_THAT(run("parts show"), Not(HasSubstr("not up to date")));
    run("set R2 Value 3k");
    EXPECT_THAT(run("parts show"), HasSubstr("\nnot up to date: the list cannot be read"));
}

TEST_F(HeldObjects, KeepTheListFromBeingChecked) {
    list();
    run("hold write R1");
    EXPECT_THAT(failure("parts check"), HasSubstr("is open elsewhere"));
}

TEST_F(HeldObjects, KeepANewListFromBeingMadeAndTheOldOneGoesOn) {
    list();
    run("hold write R1");
    EXPECT_THAT(failure("parts"), HasSubstr("is open elsewhere"));
    run("release");
    EXPECT_THAT(run("set R2 Value 3k"), EndsWith("2 rows, 0 added, 1 changed, 0 removed\n"));
}

TEST_F(HeldObjects, ReleasedAreReadAtTheNextIdleCheckWhateverItIsFor) {
    list();
    run("hold write R1");
    run("set R2 Value 3k");
    EXPECT_THAT(run("release"), Not(HasSubstr("parts plan")));
    EXPECT_THAT(idle(), EndsWith("parts plan: 2 rows, 0 added, 1 changed, 0 removed\n"));
    EXPECT_THAT(read("list.csv"), HasSubstr(",R2,3k\r\n"));
    EXPECT_THAT(idle(), Not(HasSubstr("parts plan")));
}

TEST_F(HeldObjects, ReleasedAreNotReadBeforeTheHostIsIdle) {
    list();
    run("hold write R1");
    run("set R2 Value 3k");
    run("release");
    run("typing on");
    EXPECT_THAT(idle(), Not(HasSubstr("parts plan")));
    run("typing off");
    EXPECT_THAT(idle(), HasSubstr("0 added, 1 changed"));
}

TEST_F(HeldObjects, AnAttributeIsWaitedForToo) {
    list();
    run("hold write R1 Value");
    run("erase R2");
    run("release");
    EXPECT_THAT(idle(), EndsWith("1 rows, 0 added, 0 changed, 1 removed\n"));
}

TEST_F(HeldObjects, ADefinitionIsWaitedForToo) {
    list();
    run("hold write block R");
    EXPECT_THAT(run("set R2 Value 3k"), HasSubstr("is open elsewhere"));
    run("release");
    EXPECT_THAT(idle(), HasSubstr("0 added, 1 changed"));
    EXPECT_THAT(run("insert R 3,3 Reference=R3"), HasSubstr("1 added, 0 changed"));
}

TEST_F(HeldObjects, TheTableOfBlocksIsWaitedForToo) {
    run("parts");
    run("hold write blocks");
    EXPECT_THAT(run("set R2 Value 3k"), Not(HasSubstr("removed")));
    run("release");
    EXPECT_THAT(idle(), EndsWith("2 rows, 0 added, 1 changed, 0 removed\n"));
    run("define Q");
    EXPECT_THAT(run("insert Q 3,3 Reference=Q1"), HasSubstr("1 added, 0 changed"));
}

TEST_F(HeldObjects, OthersThatAreInTheWayThenAreToldOfInTheirTurn) {
    list();
    run("hold write R1");
    run("set R2 Value 3k");
    run("release");
    run("hold write R2");
    EXPECT_THAT(idle(), HasSubstr("parts plan: the list cannot be read from the drawing"));
    run("release");
    EXPECT_THAT(idle(), HasSubstr("0 added, 1 changed"));
}

TEST_F(HeldObjects, ThatOthersReadAreNotWaitedFor) {
    list();
    run("hold read R1");
    run("hold notify R2");
    EXPECT_THAT(run("insert R 3,3 Reference=R3"), EndsWith("3 rows, 1 added, 0 changed, 0 removed\n"));
}

TEST_F(HeldObjects, TheTableInTheDrawingIsDrawnWhenItCanBeWritten) {
    run("hold read " + listInTable());
    EXPECT_THAT(run("set R2 Value 3k"), HasSubstr("parts plan: the table cannot be drawn while 0x"));
    EXPECT_THAT(failure("parts check"), HasSubstr("the table in the drawing differs from the list"));
    run("release");
    idle();
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(HeldObjects, TheTableInTheDrawingKeepsNothingElseWaiting) {
    run("hold write " + listInTable());
    EXPECT_THAT(run("set R2 Value 3k"), HasSubstr("2 rows, 0 added, 1 changed, 0 removed\n"));
    EXPECT_THAT(run("set R2 Value 4k"), EndsWith("2 rows, 0 added, 1 changed, 0 removed\n"));
    run("release");
    idle();
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(HeldObjects, TheTableInTheDrawingIsToldOfWheneverItIsHeld) {
    const std::string table = listInTable();
    for (const char* value : {"3k", "4k"}) {
        run("hold read " + table);
        EXPECT_THAT(run(std::string("set R2 Value ") + value), HasSubstr("the table cannot be drawn"));
        run("release");
        idle();
    }
}

TEST_F(HeldObjects, AListThatWaitsIsStoppedLikeAnyOther) {
    list();
    run("hold write R1");
    run("set R2 Value 3k");
    run("parts stop");
    run("release");
    EXPECT_THAT(idle(), Not(HasSubstr("parts plan")));
    EXPECT_EQ(run("unload PartsList.kmx"), "unloaded PartsList.kmx, nothing left behind\n");
}

} // namespace

} // namespace kthost
