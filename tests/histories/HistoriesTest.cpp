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

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

bool isSet(const char* name) {
    return std::getenv(name) != nullptr;
}

class Histories : public testing::TestWithParam<std::uint32_t> {};

/// Replayed with KTDX_SEED, alone; the number of steps is set with KTDX_STEPS.
TEST_P(Histories, LeaveNoChangeMissedAndNothingDangling) {
    const std::uint64_t steps = fromEnvironment("KTDX_STEPS", kSteps) / kShares;
    auto seed = static_cast<std::uint32_t>(fromEnvironment("KTDX_SEED", std::random_device()()));
    if (isSet("KTDX_SEED") && GetParam() != 0) {
        GTEST_SKIP() << "one history is being replayed";
    }
    std::cout << "from seed " << seed << std::endl;
    std::uint64_t done = 0;
    std::uint64_t histories = 0;
    do {
        const Outcome outcome = playRandom(seed);
        ASSERT_EQ(outcome.failure, "") << describeFault(outcome, seed);
        done += outcome.history.size();
        ++histories;
        ++seed;
    } while (done < steps && !isSet("KTDX_SEED"));
    std::cout << done << " steps in " << histories << " histories\n";
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
    const Outcome outcome = play(history);
    ASSERT_EQ(outcome.failure, "") << describeFault(outcome, 0);
}

} // namespace

} // namespace histories
