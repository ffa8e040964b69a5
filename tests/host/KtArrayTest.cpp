#include <KtArray.h>

#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <vector>

namespace {

using Array = KtArray<std::uint32_t>;

std::vector<std::uint32_t> elementsOf(const Array& array) {
    return {array.begin(), array.end()};
}

TEST(KtArray, StartsEmptyAndGrowsByEight) {
    const Array array;
    EXPECT_TRUE(array.isEmpty());
    EXPECT_EQ(array.length(), 0U);
    EXPECT_EQ(array.physicalLength(), 0U);
    EXPECT_EQ(array.growLength(), 8U);
}

TEST(KtArray, HasRoomAndNoElementsWhenMadeWithALength) {
    const Array array(5, 3);
    EXPECT_EQ(array.length(), 0U);
    EXPECT_EQ(array.physicalLength(), 5U);
    EXPECT_EQ(array.growLength(), 3U);
}

TEST(KtArray, GrowsByOneAtLeast) {
    Array array(0, 0);
    EXPECT_EQ(array.growLength(), 1U);
    array.append(7);
    EXPECT_EQ(array.physicalLength(), 1U);
}

TEST(KtArray, GrowsByItsGrowLengthWhenThereIsNoRoom) {
    Array array(2, 3);
    array.append(1);
    array.append(2);
    EXPECT_EQ(array.physicalLength(), 2U);
    array.append(3);
    EXPECT_EQ(array.physicalLength(), 5U);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(KtArray, GrowsByHalfWhenThatIsMore) {
    Array array(0, 1);
    array.setPhysicalLength(10);
    for (std::uint32_t i = 0; i < 11; ++i) {
        array.append(i);
    }
    EXPECT_EQ(array.physicalLength(), 15U);
}

TEST(KtArray, GrowsByWhatIsAppendedWhenThatIsMost) {
    Array array{1, 2};
    Array other(0, 1);
    for (std::uint32_t i = 0; i < 20; ++i) {
        other.append(i);
    }
    array.append(other);
    EXPECT_EQ(array.length(), 22U);
    EXPECT_EQ(array.physicalLength(), 22U);
    EXPECT_EQ(array[21], 19U);
}

TEST(KtArray, AppendsNothingOfAnEmptyOne) {
    Array array;
    array.append(Array());
    EXPECT_EQ(array.physicalLength(), 0U);
}

TEST(KtArray, AppendsItself) {
    Array array{1, 2};
    array.append(array);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2, 1, 2}));
}

TEST(KtArray, AppendsAnElementOfItsOwnThoughItGrows) {
    Array array{5, 6};
    array.append(array[0]);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{5, 6, 5}));
}

TEST(KtArray, IsCopiedWithItsGrowLength) {
    Array array(0, 3);
    array.append(1);
    const Array copy(array);
    EXPECT_EQ(copy.growLength(), 3U);
    EXPECT_EQ(elementsOf(copy), std::vector<std::uint32_t>{1});
}

TEST(KtArray, IsAssigned) {
    const Array array{1, 2};
    Array other{3};
    other = array;
    EXPECT_EQ(elementsOf(other), (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2}));
}

TEST(KtArray, IsMoved) {
    Array array{1, 2};
    const std::uint32_t* const elements = array.begin();
    Array other(std::move(array));
    EXPECT_EQ(other.begin(), elements);
    Array third;
    third = std::move(other);
    EXPECT_EQ(third.begin(), elements);
    EXPECT_EQ(third.length(), 2U);
}

TEST(KtArray, GrowsAsTheOneDidThatIsMovedIntoIt) {
    Array array(0, 3);
    Array other;
    other = std::move(array);
    EXPECT_EQ(other.growLength(), 3U);
}

TEST(KtArray, KnowsWhatItContains) {
    const Array array{1, 3};
    EXPECT_TRUE(array.contains(3));
    EXPECT_FALSE(array.contains(2));
}

TEST(KtArray, KeepsItsRoomWhenItsElementsAreForgotten) {
    Array array{1, 2, 3};
    array.setLogicalLengthZero();
    EXPECT_TRUE(array.isEmpty());
    EXPECT_EQ(array.physicalLength(), 3U);
}

TEST(KtArray, ForgetsTheElementsBehindALengthAndKeepsItsRoom) {
    Array array{1, 2, 3};
    array.setLogicalLength(2);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(array.physicalLength(), 3U);
}

TEST(KtArray, ForgetsNothingForALengthThatItDoesNotHave) {
    Array array{1, 2};
    array.setLogicalLength(5);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2}));
}

TEST(KtArray, DropsWhatItHasNoRoomForAnyMore) {
    Array array{1, 2, 3};
    array.setPhysicalLength(2);
    EXPECT_EQ(elementsOf(array), (std::vector<std::uint32_t>{1, 2}));
    array.setPhysicalLength(0);
    EXPECT_TRUE(array.isEmpty());
    EXPECT_EQ(array.begin(), nullptr);
}

TEST(KtArray, KeepsItsElementsWhenThereIsNoMemoryForLessRoom) {
    Array array{1, 2, 3};
    const FailingAllocation none;
    EXPECT_THROW(array.setPhysicalLength(2), std::bad_alloc);
    EXPECT_EQ(array.length(), 3U);
}

TEST(KtArray, AsksForTheMemoryOfAllTheRoomThat32BitsCanTell) {
    KtArray<char> array;
    const FailingAllocation none;
    EXPECT_THROW(array.setPhysicalLength(0xFFFFFFFF), std::bad_alloc);
    EXPECT_TRUE(none.hasFailed());
}

TEST(KtArray, CannotHaveMoreThan32BitsOfRoom) {
    Array array{1};
    EXPECT_THROW(array.setPhysicalLength(std::size_t{1} << 32), std::bad_array_new_length);
    EXPECT_EQ(elementsOf(array), std::vector<std::uint32_t>{1});
}

} // namespace
