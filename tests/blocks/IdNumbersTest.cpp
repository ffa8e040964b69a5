#include "blocks/IdNumbers.h"

#include "tests/support/FailingAllocation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

constexpr std::uint32_t kMany = 3000;

KtDbObjectId nth(std::uint32_t n) {
    return KtDbObjectId(0x10000 + std::uint64_t{n} * 4096); // far apart, as the ids of many drawings are
}

TEST(IdNumbers, AreGivenInTheOrderOfEntering) {
    IdNumbers numbers;
    for (std::uint32_t n = 0; n < kMany; ++n) {
        ASSERT_EQ(numbers.enter(nth(n)), n);
    }
    EXPECT_EQ(numbers.size(), kMany);
    for (std::uint32_t n = 0; n < kMany; ++n) {
        ASSERT_EQ(numbers.find(nth(n)), n);
        ASSERT_EQ(numbers.idOf(n), nth(n));
    }
}

TEST(IdNumbers, StayWhatTheyAre) {
    IdNumbers numbers;
    numbers.enter(nth(5));
    numbers.enter(nth(6));
    EXPECT_EQ(numbers.enter(nth(5)), 0U);
    EXPECT_EQ(numbers.size(), 2U);
}

TEST(IdNumbers, AreNotGivenToWhatWasNotEntered) {
    IdNumbers numbers;
    EXPECT_EQ(numbers.find(nth(1)), IdNumbers::kNone);
    numbers.enter(nth(1));
    EXPECT_EQ(numbers.find(nth(2)), IdNumbers::kNone);
}

TEST(IdNumbers, CanBelongToTheNullId) {
    IdNumbers numbers;
    numbers.start(1);
    EXPECT_EQ(numbers.find({}), IdNumbers::kNone);
    EXPECT_EQ(numbers.enter({}), 0U);
    EXPECT_EQ(numbers.find({}), 0U);
}

TEST(IdNumbers, AreForgottenWhenStartedAfresh) {
    IdNumbers numbers;
    for (std::uint32_t n = 0; n < kMany; ++n) {
        numbers.enter(nth(n));
    }
    numbers.start(2);
    for (std::uint32_t n = 0; n < kMany; ++n) {
        ASSERT_EQ(numbers.find(nth(n)), IdNumbers::kNone);
    }
    EXPECT_EQ(numbers.enter(nth(7)), 0U);
    numbers.start(kMany); // what the smaller table left of the larger one must not show
    for (std::uint32_t n = 0; n < kMany; ++n) {
        ASSERT_EQ(numbers.find(nth(n)), IdNumbers::kNone);
    }
}

TEST(IdNumbers, NeedNoMemoryForAsManyAsWereExpected) {
    for (std::uint32_t expected = 0; expected < 100; ++expected) {
        IdNumbers numbers;
        numbers.start(expected);
        const std::size_t allocations = allocationsIn([&] {
            for (std::uint32_t n = 0; n < expected; ++n) {
                numbers.enter(nth(n));
            }
        });
        ASSERT_EQ(allocations, 0U) << expected;
    }
}

/// The numbers of the ids, counted from 1, that entering takes memory for.
std::vector<std::uint32_t> idsThatTakeMemory(std::size_t expected) {
    IdNumbers numbers;
    numbers.start(expected);
    std::vector<std::uint32_t> taking;
    for (std::uint32_t n = 1; n <= 40; ++n) {
        if (allocationsIn([&] { numbers.enter(nth(n)); }) != 0) {
            taking.push_back(n);
        }
    }
    return taking;
}

TEST(IdNumbers, TakeMemoryWhereTheirTableIsHalfFullAndWhereTheIdsHaveDoubled) {
    EXPECT_THAT(idsThatTakeMemory(0), testing::ElementsAre(1, 2, 3, 4, 5, 9, 16, 17, 33));
}

TEST(IdNumbers, HaveATableOfTheNextPowerOfTwoAboveTwiceAsManyAsWereExpected) {
    EXPECT_THAT(idsThatTakeMemory(3), testing::ElementsAre(4, 7, 13, 16, 25));
    EXPECT_THAT(idsThatTakeMemory(5), testing::ElementsAre(6, 8, 11, 21, 32));
}

} // namespace
