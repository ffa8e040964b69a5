#include "tests/histories/Histories.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>

namespace histories {

namespace {

/// Tests that share the steps of a run, so that all cores have something to do.
constexpr std::uint32_t kShares = 8;

/// In all tests together. The sanitizers make each step some ten times as long, so there are fewer with them.
constexpr std::uint64_t kSteps = KTDX_HISTORY_STEPS;

/// Each is cut down, which takes its time.
constexpr std::size_t kMostFailures = 3;

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

class Histories : public testing::TestWithParam<std::uint32_t> {};

/// Plays histories from a seed on until that many steps are done, or too many failed.
void playMany(std::uint32_t seed, std::uint64_t steps) {
    std::uint64_t done = 0;
    std::size_t histories = 0;
    std::size_t failures = 0;
    for (; histories == 0 || (done < steps && failures < kMostFailures); ++histories, ++seed) {
        const Outcome outcome = playRandom(seed);
        done += outcome.history.size();
        failures += outcome.failure.empty() ? 0U : 1U;
        EXPECT_TRUE(outcome.failure.empty()) << describeFault(outcome, seed);
    }
    std::cout << done << " steps in " << histories << " histories, " << failures << " failures\n";
}

/// A history that failed is played again with KTDX_SEED. KTDX_STEPS is the number of steps of each share.
TEST_P(Histories, LeaveNoChangeMissedAndNothingDangling) {
    const std::uint64_t steps = fromEnvironment("KTDX_STEPS", kSteps / kShares);
    const std::uint32_t seed = std::random_device()();
    std::cout << "from seed " << seed << std::endl;
    playMany(seed, steps);
}

TEST(HistoryOfASeed, LeavesNoChangeMissedAndNothingDangling) {
    if (std::getenv("KTDX_SEED") == nullptr) {
        GTEST_SKIP() << "KTDX_SEED names no history";
    }
    playMany(static_cast<std::uint32_t>(fromEnvironment("KTDX_SEED", 0)), 1);
}

INSTANTIATE_TEST_SUITE_P(Share, Histories, testing::Range(0U, kShares));

/// A script that a failure printed, or that a crash left, is played with KTDX_SCRIPT=FILE.
TEST(HistoryScript, ShowsNoFault) {
    const char* file = std::getenv("KTDX_SCRIPT");
    if (file == nullptr) {
        GTEST_SKIP() << "KTDX_SCRIPT names no script";
    }
    std::ifstream stream(file);
    ASSERT_TRUE(stream) << file;
    History history;
    for (std::string line; std::getline(stream, line);) {
        history.push_back(line);
    }
    ASSERT_FALSE(crashes(history)) << describeCrash(history);
    const Outcome outcome = play(history);
    ASSERT_EQ(outcome.failure, "") << describeFault(outcome, 0);
}

} // namespace

} // namespace histories
