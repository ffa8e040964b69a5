#include "tests/histories/CrashScript.h"
#include "tests/histories/Histories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace histories {

namespace {

using testing::EndsWith;
using testing::StartsWith;

bool has(const History& history, const std::string& line) {
    return std::find(history.begin(), history.end(), line) != history.end();
}

/// A crash in the middle of being played.
void playToACrash(const History& history) {
    CrashScript script;
    script.add("new plan");
    if (has(history, "define A") && has(history, "purge A")) {
        std::abort();
    }
}

const History kHistory{"new plan", "define A", "insert A 1,1", "erase @1", "purge A", "undo"};

TEST(Crash, IsNoticedFromAnotherProcess) {
    EXPECT_TRUE(crashes(kHistory, &playToACrash));
}

TEST(Crash, OfAnExceptionIsOneToo) {
    EXPECT_TRUE(crashes(kHistory, [](const History& history) { static_cast<void>(history.at(99)); }));
}

TEST(Crash, IsNoneWhenTheHistoryCanBePlayed) {
    EXPECT_FALSE(crashes(kHistory));
    EXPECT_FALSE(crashes(playRandom(5).history));
}

TEST(Crash, IsCutDownToTheLinesThatLeadToIt) {
    const std::string said = describeCrash(kHistory, &playToACrash);
    EXPECT_THAT(said, StartsWith("it ends in a crash\n"));
    EXPECT_THAT(said, EndsWith(":\ndefine A\npurge A\n"));
}

TEST(Crash, CutDownLeavesNoScriptBehind) {
    const std::filesystem::path file = CrashScript().file();
    EXPECT_NE(describeCrash(kHistory, &playToACrash), "");
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace

} // namespace histories
