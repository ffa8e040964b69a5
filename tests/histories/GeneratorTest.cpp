#include "tests/histories/Histories.h"

#include <gtest/gtest.h>

namespace histories {

namespace {

constexpr std::uint32_t kSeeds = 40;

const Tally& tallyOfSome() {
    static const Tally all = [] {
        Tally sum;
        for (std::uint32_t seed = 1; seed <= kSeeds; ++seed) {
            sum.add(playRandom(seed).tally);
        }
        return sum;
    }();
    return all;
}

TEST(Generator, GivesTheSameHistoryForTheSameSeed) {
    EXPECT_EQ(playRandom(5).history, playRandom(5).history);
    EXPECT_NE(playRandom(5).history, playRandom(6).history);
}

TEST(Generator, ItsHistoriesCanBePlayedAgainLineByLine) {
    const History history = playRandom(5).history;
    EXPECT_EQ(play(history).history, history);
}

TEST(Generator, EveryKindOfLineIsDoneNowAndThen) {
    for (const auto& [kind, counts] : tallyOfSome().lines) {
        const bool mustFail = kind == "frobnicate" || kind == "puppet " || kind == "puppet throw";
        EXPECT_EQ(counts.done == 0, mustFail) << kind << ", refused " << counts.refused << " times";
    }
}

TEST(Generator, MostLinesCanBeDone) {
    std::size_t done = 0;
    std::size_t refused = 0;
    for (const auto& [kind, counts] : tallyOfSome().lines) {
        done += counts.done;
        refused += counts.refused;
    }
    EXPECT_GT(done, 2 * refused);
}

TEST(Generator, ListsAreComparedAtManyIdleChecks) {
    EXPECT_GT(3 * tallyOfSome().listChecks, tallyOfSome().idleChecks);
}

TEST(Generator, TheModuleIsHeldAgainstTheModelAtMostIdleChecks) {
    EXPECT_GT(2 * tallyOfSome().comparisons, tallyOfSome().idleChecks);
}

TEST(Generator, MostLinesEndInAnIdleCheck) {
    std::size_t lines = 0;
    for (const auto& [kind, counts] : tallyOfSome().lines) {
        lines += counts.done + counts.refused;
    }
    EXPECT_GT(2 * tallyOfSome().idleChecks, lines);
}

} // namespace

} // namespace histories
