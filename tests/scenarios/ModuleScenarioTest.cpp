#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::Contains;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ModuleScenario : public ScenarioTest {
protected:
    void makePlan() {
        run("new plan");
        run("define R");
        run("insert R 1,1 Reference=R1 Value=1k");
    }
};

TEST_F(ModuleScenario, FromLoadingToUnloadingLeavesNothingBehind) {
    loadAll();
    makePlan();
    run("parts R");
    run("set R1 Value 2k");
    EXPECT_EQ(run("unload PartsList.kmx"), "unloaded PartsList.kmx, nothing left behind\n");
    EXPECT_EQ(run("unload KtDxNotify.kmx"), "unloaded KtDxNotify.kmx, nothing left behind\n");
    EXPECT_THAT(host_.end().findings, IsEmpty());
}

TEST_F(ModuleScenario, TheHostsEndWithEverythingAttachedLeavesNothingBehind) {
    loadAll();
    makePlan();
    run("parts R as table 9,9");
    run("parts heartbeat 100");
    run("set R1 Value 2k");
    EXPECT_THAT(host_.end().findings, IsEmpty());
}

TEST_F(ModuleScenario, DocumentsThatAreOpenBeforeTheModuleAreWatchedToo) {
    makePlan();
    loadAll();
    run("parts R");
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
}

TEST_F(ModuleScenario, TwoClientsAreBothCalled) {
    loadAll();
    loadWatcher("Watcher.kmx");
    makePlan();
    run("parts R");
    run("watch R");
    const std::string said = run("set R1 Value 2k");
    EXPECT_THAT(said, HasSubstr("watcher called"));
    EXPECT_THAT(said, HasSubstr("parts plan: 1 rows, 0 added, 1 changed, 0 removed"));
}

TEST_F(ModuleScenario, OneClientLeavingLeavesTheOtherItsCalls) {
    loadAll();
    loadWatcher("Watcher.kmx");
    makePlan();
    run("parts R");
    run("watch R");
    run("unload Watcher.kmx");
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
    EXPECT_THAT(host_.end().findings, IsEmpty());
}

TEST_F(ModuleScenario, ASecondInitialiseIsRefused) {
    loadAll();
    std::filesystem::copy_file(binary("KtDxNotify.kmx"), folder_ / "Second.kmx");
    std::filesystem::copy_file(binary("KtDxNotifyRes.dll"), folder_ / "KtDxNotifyRes.dll");
    EXPECT_THAT(failure("load " + inFolder("Second.kmx")), HasSubstr("Second.kmx"));
    makePlan();
    run("parts R");
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
}

TEST_F(ModuleScenario, WithoutItsResourcesTheModuleIsRefused) {
    std::filesystem::copy_file(binary("KtDxNotify.kmx"), folder_ / "KtDxNotify.kmx");
    EXPECT_NE(failure("load " + inFolder("KtDxNotify.kmx")), "");
    EXPECT_THAT(host_.modules().modules(), IsEmpty());
}

TEST_F(ModuleScenario, UnloadingWithAClientStillAttachedEndsTheCalls) {
    loadAll();
    makePlan();
    run("parts R");
    EXPECT_EQ(run("unload KtDxNotify.kmx"), "unloaded KtDxNotify.kmx, nothing left behind\n");
    EXPECT_THAT(run("set R1 Value 2k"), Not(HasSubstr("parts plan")));
    run("parts stop");
    EXPECT_THAT(host_.end().findings, IsEmpty());
}

TEST_F(ModuleScenario, LoadedAgainTheModuleServesAgain) {
    loadAll();
    makePlan();
    run("parts R");
    run("unload KtDxNotify.kmx");
    run("load \"" + binary("KtDxNotify.kmx") + "\"");
    run("parts R");
    EXPECT_THAT(run("set R1 Value 2k"), HasSubstr("0 added, 1 changed"));
}

TEST_F(ModuleScenario, AClientThatGoesWithoutDetachingIsNamedAndNotCalled) {
    run("load \"" + binary("KtDxNotify.kmx") + "\"");
    loadWatcher("CarelessWatcher.kmx");
    makePlan();
    run("watch R");
    EXPECT_THAT(run("unload CarelessWatcher.kmx"), HasSubstr("CarelessWatcher.kmx, and it left:"));
    EXPECT_THAT(run("set R1 Value 2k"), Not(HasSubstr("watcher called")));
    EXPECT_THAT(host_.end().findings, Contains(HasSubstr("CarelessWatcher.kmx")));
}

} // namespace

} // namespace kthost
