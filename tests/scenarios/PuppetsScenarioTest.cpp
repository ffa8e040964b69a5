#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Clients that do as a script tells them, as a history that shows a fault is printed.
class PuppetsScenario : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        loadWatcher("Puppets.kmx");
        run("new plan");
        run("define R");
        run("insert R 1,1 Reference=R1");
    }
};

TEST_F(PuppetsScenario, AttachHasThemCalledInTheirOrder) {
    run("puppet 7 attach R");
    run("puppet 2 attach *");
    EXPECT_THAT(run("move R1 2,2"), EndsWith("puppet 2 called\npuppet 7 called\n"));
}

TEST_F(PuppetsScenario, DetachHasThemCalledNoMore) {
    run("puppet 7 attach R");
    run("puppet 7 detach");
    EXPECT_THAT(run("move R1 2,2"), Not(HasSubstr("called")));
}

TEST_F(PuppetsScenario, EveryHasThemCalledAtIdleChecks) {
    run("puppet 3 every 0");
    EXPECT_THAT(run("define C"), EndsWith("puppet 3 called\n"));
    run("puppet 3 never");
    EXPECT_THAT(run("define D"), Not(HasSubstr("called")));
}

TEST_F(PuppetsScenario, UpdateCallsInTheMiddleOfACommand) {
    run("puppet 7 attach R");
    EXPECT_THAT(run("together \"move R1 2,2\" \"puppet update force notify\" \"define C\""),
                HasSubstr("puppet 7 called\ndefined C"));
}

TEST_F(PuppetsScenario, WhenCalledTheyDoWhatTheyWereTold) {
    run("puppet 7 attach R");
    run("puppet 7 when called 7 detach");
    run("puppet 7 when called 9 attach R");
    run("move R1 2,2");
    EXPECT_THAT(run("move R1 3,3"), AllOf(HasSubstr("puppet 9 called"), Not(HasSubstr("puppet 7 called"))));
}

TEST_F(PuppetsScenario, WhenCalledTheySayWhatCannotBeDone) {
    run("puppet 7 attach R");
    run("puppet 7 when called strike Q");
    EXPECT_THAT(run("move R1 2,2"), HasSubstr("puppet 7: there is no reference to it"));
}

TEST_F(PuppetsScenario, ToldToDoNothingTheyDoNothing) {
    run("puppet 7 attach R");
    run("puppet 7 when called strike R");
    run("puppet 7 when called nothing");
    run("move R1 2,2");
    EXPECT_EQ(referencesTo(recordByName(drawing(), L"R")).size(), 1U);
}

TEST_F(PuppetsScenario, TheyEditTheDrawingFromInsideTheirCallbacks) {
    run("puppet 7 attach R");
    run("puppet 7 when called strike R");
    run("puppet 7 when called draw");
    run("move R1 2,2");
    EXPECT_TRUE(referencesTo(recordByName(drawing(), L"R")).empty());
    EXPECT_FALSE(recordByName(drawing(), L"*T1").isNull());
}

TEST_F(PuppetsScenario, TheyWatchDocumentsThatAreNotCurrent) {
    run("new other");
    run("puppet at plan 4 attach R");
    run("current plan");
    EXPECT_THAT(run("move R1 2,2"), EndsWith("puppet 4 called\n"));
    EXPECT_NE(failure("puppet at nowhere 4 attach R"), "");
}

TEST_F(PuppetsScenario, RefuseWhatNoPuppetDoes) {
    EXPECT_NE(failure("puppet"), "");
    EXPECT_NE(failure("puppet 12 detach"), "");
    EXPECT_NE(failure("puppet 1 dance"), "");
}

TEST_F(PuppetsScenario, UnloadedTheyLeaveNothingBehind) {
    run("puppet 7 attach R");
    run("puppet 8 every 0");
    EXPECT_EQ(run("unload Puppets.kmx"), "unloaded Puppets.kmx, nothing left behind\n");
    EXPECT_TRUE(host_.end().clean());
}

} // namespace

} // namespace kthost
