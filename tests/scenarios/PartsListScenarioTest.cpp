#include "kthost/runtime/Faults.h"
#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace kthost {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// An empty drawing "plan" with the blocks R and Q, and a list.
class PartsListScenario : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        run("new plan");
        run("define R");
        run("define Q");
        run("insert R 1,1 Reference=R1 Value=1k");
    }
};

TEST_F(PartsListScenario, WritesTheListWhenItBegins) {
    EXPECT_EQ(run("parts R to " + inFolder("list.csv")),
              "parts plan: 1 rows, 1 added, 0 changed, 0 removed\n");
    EXPECT_THAT(read("list.csv"), StartsWith("Block,Container,Handle,Reference,Value\r\nR,*Model_Space,"));
}

TEST_F(PartsListScenario, FollowsAnEditAtTheIdleCheckBehindIt) {
    run("parts R to " + inFolder("list.csv"));
    EXPECT_THAT(run("set R1 Value 2k"), EndsWith("parts plan: 1 rows, 0 added, 1 changed, 0 removed\n"));
    EXPECT_THAT(read("list.csv"), EndsWith(",R1,2k\r\n"));
}

TEST_F(PartsListScenario, AnEditHasOnlyItsReferenceReadAgain) {
    const auto openings = [this](std::size_t others) {
        run("new with" + std::to_string(others));
        run("define R");
        run("insert R 1,1 Reference=R1 Value=1k");
        for (std::size_t i = 0; i < others; ++i) {
            run("insert R 2,2 A=1");
        }
        run("parts R");
        run("set R1 Value 2k"); // the first edit has everything read
        Faults::instance().reset();
        run("set R1 Value 3k");
        return Faults::instance().calls(HostCall::openObject);
    };
    EXPECT_EQ(openings(12) - openings(2), 10U); // those of KtDxNotify, which looks at each reference
}

TEST_F(PartsListScenario, WhatWasReadBeforeSomethingWasInTheWayIsReadAgain) {
    run("parts R Q");
    run("set R1 Value 2k");
    run(R"(together "define B" "insert R 1,1 in B Reference=R2 Value=1")"
        R"( "insert Q 1,1 in B Reference=Q1 Value=1" "hold write Q1 Value")");
    run(R"(together "erase Q1" "set R1 Value 2" "set R2 Value 2")");
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(PartsListScenario, WhatWasReadBeforeTheFileCouldNotBeWrittenIsReadAgain) {
    const std::filesystem::path folder = folder_ / "lists";
    std::filesystem::create_directory(folder);
    run("parts R to " + (folder / "list.csv").string());
    run("set R1 Value 2k");
    std::filesystem::rename(folder, folder_ / "away");
    run(R"(together "define B" "insert R 1,1 in B Reference=R2 Value=1")");
    std::filesystem::rename(folder_ / "away", folder);
    run(R"(together "set R1 Value 2" "set R2 Value 2")");
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(PartsListScenario, AReferenceEditedWithItsRecordHasTheOthersReadAgainToo) {
    run("insert R 2,2 Reference=R2 Value=1k");
    run("parts R");
    run("set R1 Value 2k");
    run(R"(together "rename R Resistor" "set R1 Value 3k")");
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(PartsListScenario, IsNotCalledForBlocksThatItDoesNotWatch) {
    run("parts R");
    EXPECT_THAT(run("insert Q 1,1 Reference=Q1"), Not(HasSubstr("parts plan")));
}

TEST_F(PartsListScenario, IsCalledOnceForACommandThatChangesMuch) {
    run("parts");
    run("set R1 Value 2k");
    run("insert Q 1,1 Reference=Q1");
    EXPECT_EQ(run("undo 2"), "undone insert, set\nparts plan: 1 rows, 0 added, 1 changed, 1 removed\n");
}

TEST_F(PartsListScenario, IsCalledForABlockInsideAChangedOne) {
    run("define Sheet");
    run("insert Q 1,1 in Sheet Reference=Q1");
    run("parts Q by occurrence");
    EXPECT_THAT(run("insert Sheet 5,5"), EndsWith("1 rows, 1 added, 0 changed, 0 removed\n"));
}

TEST_F(PartsListScenario, TakesInADefinitionThatCameLater) {
    run("parts");
    EXPECT_THAT(run("define New"), Not(HasSubstr("parts plan")));
    EXPECT_THAT(run("insert New 1,1 Reference=N1"), EndsWith("2 rows, 1 added, 0 changed, 0 removed\n"));
    EXPECT_THAT(run("move N1 3,3"), HasSubstr("parts plan"));
}

TEST_F(PartsListScenario, WaitsWhileInputIsWaiting) {
    run("parts R");
    run("typing on");
    EXPECT_THAT(run("set R1 Value 2k"), Not(HasSubstr("parts plan")));
    run("typing off");
    EXPECT_THAT(run("set R1 Value 3k"), HasSubstr("0 added, 1 changed"));
}

TEST_F(PartsListScenario, StopsWhenTold) {
    run("parts R");
    run("parts stop");
    EXPECT_THAT(run("set R1 Value 2k"), Not(HasSubstr("parts plan")));
    EXPECT_EQ(failure("parts stop"), "no list is kept for this document");
}

TEST_F(PartsListScenario, ANewListTakesThePlaceOfTheOldOne) {
    run("parts R");
    run("parts Q");
    EXPECT_THAT(run("set R1 Value 2k"), Not(HasSubstr("parts plan")));
}

TEST_F(PartsListScenario, AListThatCannotBeMadeLeavesTheOldOne) {
    run("parts R");
    EXPECT_EQ(failure("parts X"), "the drawing has no block 'X'");
    EXPECT_NE(failure("parts Q to " + inFolder("nowhere/list.csv")), "");
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
    EXPECT_THAT(run("insert Q 1,1"), Not(HasSubstr("parts plan")));
}

TEST_F(PartsListScenario, ATableOfAListThatCannotBeMadeIsNotDrawn) {
    const std::wstring before = dumpDatabase(drawing());
    EXPECT_NE(failure("parts R as table 1,1 to " + inFolder("nowhere/list.csv")), "");
    EXPECT_EQ(dumpDatabase(drawing()), before);
}

TEST_F(PartsListScenario, CheckRefusesAFileThatSomebodyElseHasChanged) {
    run("parts R to " + inFolder("list.csv"));
    run("parts check");
    std::ofstream(folder_ / "list.csv") << "something else";
    EXPECT_THAT(failure("parts check"), EndsWith("list.csv' differs from the list"));
}

TEST_F(PartsListScenario, CheckRefusesAListThatIsBehindTheDrawing) {
    run("parts R");
    run("typing on");
    run("set R1 Value 2k");
    EXPECT_THAT(failure("parts check"), EndsWith("0 added, 1 changed, 0 removed"));
}

TEST_F(PartsListScenario, TwoDocumentsAreFollowedAtOnce) {
    run("parts R to " + inFolder("plan.csv"));
    run("new other");
    run("define R");
    run("parts R to " + inFolder("other.csv"));
    EXPECT_THAT(run("insert R 1,1 Reference=R9"),
                EndsWith("parts other: 1 rows, 1 added, 0 changed, 0 removed\n"));
    const std::string before = read("other.csv");
    run("current plan");
    EXPECT_THAT(run("set R1 Value 2k"), EndsWith("parts plan: 1 rows, 0 added, 1 changed, 0 removed\n"));
    EXPECT_EQ(read("other.csv"), before);
}

TEST_F(PartsListScenario, ClosingADocumentEndsItsListOnly) {
    run("parts R");
    run("new other");
    run("define R");
    run("parts R");
    run("close other");
    EXPECT_THAT(run("set R1 Value 2k"), EndsWith("parts plan: 1 rows, 0 added, 1 changed, 0 removed\n"));
    EXPECT_TRUE(host_.end().clean());
}

TEST_F(PartsListScenario, ALongRunOfDocumentsUsesUpNothing) {
    for (int document = 0; document < 300; ++document) {
        run("new passing");
        run("define R");
        run("parts");
        run("parts heartbeat 100");
        run("close");
    }
    EXPECT_THAT(run("parts"), HasSubstr("1 rows"));
}

TEST_F(PartsListScenario, HeartbeatsComeAtTheirInterval) {
    host_.clock().set(1000);
    EXPECT_THAT(run("parts heartbeat 500"), HasSubstr("heartbeat 1\n"));
    EXPECT_THAT(run("move R1 2,2"), Not(HasSubstr("heartbeat")));
    run("tick 500");
    EXPECT_THAT(run("move R1 3,3"), HasSubstr("heartbeat 2\n"));
    run("parts heartbeat off");
    run("tick 500");
    EXPECT_THAT(run("move R1 4,4"), Not(HasSubstr("heartbeat")));
}

TEST_F(PartsListScenario, AHeartbeatDoesNotHoldTheListUp) {
    host_.clock().set(1000);
    run("parts");
    run("parts heartbeat 5000");
    run("define New");
    EXPECT_THAT(run("insert New 1,1 Reference=N1"), HasSubstr("2 rows, 1 added"));
}

TEST_F(PartsListScenario, WithoutKtDxNotifyAListIsRefused) {
    run("unload KtDxNotify.kmx");
    EXPECT_THAT(failure("parts R"), HasSubstr("is KtDxNotify loaded?"));
}

TEST_F(PartsListScenario, TheTemplateChoosesBlocksAndColumns) {
    run("open \"" + sample() + "\"");
    folder_.file("parts.blk", contentsOf(std::string(KTDX_SAMPLES) + "/parts.blk")); // others read the sample
    run("parts from \"" + inFolder("parts.blk") + "\" to " + inFolder("list.csv"));
    EXPECT_THAT(read("list.csv"), StartsWith("Block,Container,Handle,"));
    EXPECT_THAT(read("list.csv"), Not(HasSubstr("Supply:GND")));
    EXPECT_THAT(run("set R1 Value \"470 k\""), HasSubstr("0 added, 1 changed"));
}

TEST_F(PartsListScenario, ATemplateThatIsNotThereIsRefused) {
    EXPECT_EQ(failure("parts from nowhere.blk"),
              "the template 'nowhere.blk' cannot be read or selects no block");
}

} // namespace

} // namespace kthost
