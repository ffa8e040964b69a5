#include "legacy/ShellSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

/// The sort in its plainest words, every comparison made: what the order must be.
std::vector<std::size_t> plainOrder(std::vector<std::size_t> ranks) {
    std::vector<std::size_t> order(ranks.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t gap = ranks.size() / 2; gap >= 1; gap /= 2) {
        for (std::size_t i = gap; i < ranks.size(); ++i) {
            for (std::size_t j = i; j >= gap; j -= gap) {
                if (ranks[j] < ranks[j - gap]) {
                    std::swap(ranks[j], ranks[j - gap]);
                    std::swap(order[j], order[j - gap]);
                }
            }
        }
    }
    return order;
}

/// Random ranks without gaps, `distinct` of them.
std::vector<std::size_t> randomRanks(std::size_t length, std::size_t distinct, std::mt19937& random) {
    std::vector<std::size_t> ranks(length);
    for (std::size_t i = 0; i < length; ++i) {
        ranks[i] = i % distinct;
    }
    std::shuffle(ranks.begin(), ranks.end(), random);
    return ranks;
}

TEST(ShellSort, HasNothingToDoWithoutElements) {
    EXPECT_TRUE(shellSortedOrder({}).empty());
}

TEST(ShellSort, LeavesOneElement) {
    EXPECT_EQ(shellSortedOrder(std::vector<std::size_t>{0}), (std::vector<std::size_t>{0}));
}

TEST(ShellSort, PutsAllDifferentElementsInOrder) {
    EXPECT_EQ(shellSortedOrder(std::vector<std::size_t>{2, 0, 3, 1}), (std::vector<std::size_t>{1, 3, 0, 2}));
}

TEST(ShellSort, LeavesEqualElementsWhereNothingMovesThem) {
    EXPECT_EQ(shellSortedOrder(std::vector<std::size_t>{0, 0, 0}), (std::vector<std::size_t>{0, 1, 2}));
}

TEST(ShellSort, ChangesTheOrderOfEqualElementsThatAWideGapCarriesPastEachOther) {
    // With a gap of 2 the first 1 changes places with the 0, and so comes to stand after the second 1.
    EXPECT_EQ(shellSortedOrder(std::vector<std::size_t>{1, 1, 0, 1}), (std::vector<std::size_t>{2, 1, 0, 3}));
}

TEST(ShellSort, ArrivesWhereThePlainSortDoes) {
    const auto seed = std::random_device()();
    RecordProperty("seed", std::to_string(seed));
    std::mt19937 random(seed);
    for (std::size_t length = 1; length < 60; ++length) {
        for (const std::size_t distinct : {std::size_t{1}, std::size_t{2}, std::size_t{5}, length}) {
            const auto ranks = randomRanks(length, std::min(distinct, length), random);
            ASSERT_EQ(shellSortedOrder(ranks), plainOrder(ranks)) << "seed " << seed;
        }
    }
}

} // namespace
