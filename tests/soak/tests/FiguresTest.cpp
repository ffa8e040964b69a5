#include "tests/soak/Figures.h"

#include <gtest/gtest.h>

namespace soak {

namespace {

TEST(Rise, OfAStraightLineIsItsLastValueLessItsFirst) {
    EXPECT_DOUBLE_EQ(rise({5, 7, 9, 11}), 6);
}

TEST(Rise, OfValuesThatGoUpAndDownAlikeIsNone) {
    EXPECT_DOUBLE_EQ(rise({1, 9, 9, 1}), 0);
}

TEST(Rise, IsBelowZeroWhereValuesFall) {
    EXPECT_DOUBLE_EQ(rise({4, 2, 0}), -4);
}

TEST(Rise, IsHardlyThatOfASingleValueOutOfLine) {
    EXPECT_LT(rise({0, 0, 0, 100, 0, 0, 0, 0}), 100);
}

TEST(Rise, OfASingleValueIsNone) {
    EXPECT_DOUBLE_EQ(rise({3}), 0);
}

TEST(Median, IsTheMiddleOne) {
    EXPECT_DOUBLE_EQ(median({9, 1, 5}), 5);
}

TEST(Median, OfAnEvenNumberIsTheLowerOfTheMiddleTwo) {
    EXPECT_DOUBLE_EQ(median({9, 1, 5, 3}), 3);
}

TEST(Median, OfNoneIsZero) {
    EXPECT_DOUBLE_EQ(median({}), 0);
}

TEST(Halves, OfAnOddNumberLeaveTheMiddleToTheLater) {
    EXPECT_EQ(firstHalf({1, 2, 3}), (std::vector<double>{1}));
    EXPECT_EQ(lastHalf({1, 2, 3}), (std::vector<double>{2, 3}));
}

} // namespace

} // namespace soak
