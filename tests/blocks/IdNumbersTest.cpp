#include "blocks/IdNumbers.h"

#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>

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

} // namespace
