#include "kthost/console/ObjectNames.h"
#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

#include <KtDbTable.h>

namespace kthost {

namespace {

using testing::HasSubstr;

/// A drawing with one resistor, whose list is drawn in the drawing itself.
class DrawnTableScenario : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        run("new plan");
        run("define R");
        run("insert R 1,1 Reference=R1 Value=1k");
        run("parts R as table 50,50");
        table_ = referencesTo(recordByName(drawing(), L"*T1")).at(0);
    }

    std::wstring cell(std::uint32_t row, std::uint32_t column) {
        KtDbTable* table = nullptr;
        EXPECT_EQ(ktdbOpenObject(table, table_, KtDb::kForRead), Orbx::eOk);
        std::wstring text = table->cell(row, column);
        EXPECT_EQ(table->close(), Orbx::eOk);
        return text;
    }

    std::string handle() { return handleText(handleOf(table_)); }

    static int count(const std::string& text, const std::string& what) {
        int times = 0;
        for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
            ++times;
        }
        return times;
    }

    KtDbObjectId table_;
};

TEST_F(DrawnTableScenario, ShowsColumnsAndRows) {
    EXPECT_EQ(cell(0, 3), L"Reference");
    EXPECT_EQ(cell(1, 3), L"R1");
    EXPECT_EQ(cell(1, 4), L"1k");
}

TEST_F(DrawnTableScenario, FollowsAnEdit) {
    run("set R1 Value 2k");
    EXPECT_EQ(cell(1, 4), L"2k");
    run("insert R 2,2 Reference=R2 Value=3k");
    EXPECT_EQ(cell(2, 4), L"3k");
}

TEST_F(DrawnTableScenario, IsNotPartOfItsOwnList) {
    EXPECT_THAT(run("parts as table 90,90"), HasSubstr("2 rows")); // R1 and the table of the list before
}

TEST_F(DrawnTableScenario, CallsOnceForAnEditAndNotForItself) {
    run("parts as table 90,90"); // everything is watched, the table too
    EXPECT_EQ(count(run("set R1 Value 2k"), "parts plan:"), 1);
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(count(run("typing off"), "parts plan:"), 0);
    }
}

TEST_F(DrawnTableScenario, CallbacksStopWhenCommandsThatChangeNothingFollow) {
    run("parts as table 90,90");
    run("set R1 Value 2k");
    run("parts show"); // a command, with its idle check
    EXPECT_EQ(count(run("parts show"), "parts plan:"), 0);
}

TEST_F(DrawnTableScenario, KeepsTheUsersUndoStepsWhatTheyWere) {
    run("set R1 Value 2k");
    EXPECT_EQ(run("undo").substr(0, 11), "undone set\n");
    EXPECT_EQ(cell(1, 4), L"1k");
    EXPECT_EQ(run("redo").substr(0, 11), "redone set\n");
    EXPECT_EQ(cell(1, 4), L"2k");
}

TEST_F(DrawnTableScenario, IsDrawnAnewWhenUndoBringsAnEarlierStateBack) {
    run("move " + handle() + " 70,70");
    run("set R1 Value 2k");
    run("undo 2");
    EXPECT_EQ(cell(1, 4), L"1k");
    run("redo 2");
    EXPECT_EQ(cell(1, 4), L"2k");
}

/// The first list is watched while the second one's table is drawn, so KtDxNotify does not know its record
/// yet.
TEST_F(DrawnTableScenario, IsDrawnAnewWhenUndoBringsItBackAndTheListIsWhatItWas) {
    run("parts R as table 90,90");
    table_ = referencesTo(recordByName(drawing(), L"*T2")).at(0);
    run("typing on");
    run("set R1 Value 2k");
    run("typing off");
    run("move " + handle() + " 70,70"); // drawn behind it, and not kept for undo
    run("undo");
    EXPECT_EQ(cell(1, 4), L"2k");
}

TEST_F(DrawnTableScenario, SaysOnceThatItIsErased) {
    const std::string said = run("erase " + handle()) + run("set R1 Value 2k") + run("set R1 Value 3k");
    EXPECT_EQ(count(said, "is erased and not drawn"), 1);
}

TEST_F(DrawnTableScenario, ErasedLeavesTheListGoingOn) {
    run("erase " + handle());
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
    run("parts check");
}

TEST_F(DrawnTableScenario, IsDrawnAgainOnceItIsRestored) {
    run("erase " + handle());
    run("set R1 Value 2k");
    run("restore " + handle());
    EXPECT_EQ(cell(1, 4), L"2k");
    run("set R1 Value 3k");
    EXPECT_EQ(cell(1, 4), L"3k");
}

TEST_F(DrawnTableScenario, GoesWithTheCommandThatDrewItWhenThatIsUndone) {
    run("undo");
    EXPECT_TRUE(recordByName(drawing(), L"*T1").isNull());
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
}

} // namespace

} // namespace kthost
