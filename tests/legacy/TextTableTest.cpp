#include "legacy/TextTable.h"

#include "tests/legacy/CountedMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace {

/// Hashes of one value, as bad as they can be.
constexpr std::uint64_t kSameHash = 0xFFFFFFFF'00000000;

/// Spread, so that their order is that of the numbers.
std::uint64_t spreadHash(std::uint64_t number) {
    return number << 52;
}

TEST(TextTable, NumbersTextsInTheOrderInWhichTheyCome) {
    TextTable table;
    EXPECT_EQ(table.add("a", 1), 0U);
    EXPECT_EQ(table.add("b", 2), 1U);
    EXPECT_EQ(table.size(), 2U);
}

TEST(TextTable, KnowsATextAgain) {
    TextTable table;
    table.add("a", 1);
    table.add("b", 2);
    EXPECT_EQ(table.add("a", 1), 0U);
    EXPECT_EQ(table.size(), 2U);
}

TEST(TextTable, KeepsTheTextsThemselves) {
    TextTable table;
    std::string text = "a text";
    table.add(text, 1);
    text = "another";
    EXPECT_EQ(table.at(0), "a text");
}

TEST(TextTable, TellsTextsApartThatHaveTheSameHash) {
    TextTable table;
    for (std::uint32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(table.add(std::to_string(i), kSameHash), i);
    }
    for (std::uint32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(table.add(std::to_string(i), kSameHash), i);
    }
}

TEST(TextTable, FindsAllTextsAfterItHasGrown) {
    TextTable table;
    for (std::uint32_t i = 0; i < 4000; ++i) {
        ASSERT_EQ(table.add(std::to_string(i), spreadHash(i)), i);
    }
    for (std::uint32_t i = 0; i < 4000; ++i) {
        ASSERT_EQ(table.add(std::to_string(i), spreadHash(i)), i);
        ASSERT_EQ(table.at(i), std::to_string(i));
    }
}

TEST(TextTable, FindsAllTextsAfterRoomWasMade) {
    TextTable table;
    table.add("a", kSameHash);
    table.add("b", kSameHash);
    table.reserve(1000);
    EXPECT_EQ(table.add("a", kSameHash), 0U);
    EXPECT_EQ(table.add("b", kSameHash), 1U);
}

TEST(TextTable, NeedsNoMemoryForTextsThatRoomWasMadeFor) {
    constexpr std::uint32_t kTexts = 1024;
    TextTable table;
    table.add("0", spreadHash(0)); // which brings room for the bytes of all
    table.reserve(kTexts - 1);
    counted_memory::failAfter(0);
    for (std::uint32_t i = 1; i < kTexts; ++i) {
        table.add(std::to_string(i), spreadHash(i));
    }
    EXPECT_TRUE(counted_memory::cancelFailure());
    EXPECT_EQ(table.size(), kTexts);
}

TEST(TextTable, TakesNoMemoryToMakeRoomThatIsThere) {
    TextTable table;
    table.reserve(10);
    counted_memory::failAfter(0);
    table.reserve(10);
    EXPECT_TRUE(counted_memory::cancelFailure());
}

TEST(TextTable, MovesToOtherMemoryAFewTimesOnlyWhereRoomIsMadeForOneTextAtATime) {
    TextTable table;
    counted_memory::failAfter(50); // two arrays, a dozen doublings of each
    for (std::uint32_t i = 0; i < 4000; ++i) {
        table.reserve(1);
        table.add(std::to_string(i), spreadHash(i));
    }
    EXPECT_TRUE(counted_memory::cancelFailure());
}

/// What the table has taken since and not given back.
class RoomOfATextTable : public testing::Test {
protected:
    [[nodiscard]] std::size_t taken() const { return counted_memory::current() - before_; }

    void addUpTo(std::uint32_t texts, bool makesRoomForEach = false) {
        for (std::uint32_t i = 0; i < texts; ++i) {
            if (makesRoomForEach) {
                table_.reserve(1);
            }
            table_.add(std::to_string(i), spreadHash(i));
        }
    }

    static constexpr std::size_t kText = 24;
    static constexpr std::size_t kSlot = 8;
    static constexpr double kOverhead = 30'000; // of the system's heap, for large arrays

    std::size_t before_ = counted_memory::current();
    TextTable table_;
};

TEST_F(RoomOfATextTable, IsLittleForAnEmptyOne) {
    EXPECT_LT(taken(), 40 * kSlot);
}

TEST_F(RoomOfATextTable, HasAtLeastTwoSlotsForEachText) {
    table_.reserve(6000);
    EXPECT_NEAR(static_cast<double>(taken()), 6000 * kText + 16384 * kSlot, kOverhead);
}

TEST_F(RoomOfATextTable, HasNoMoreSlotsWhereTwoForEachTextComeOutEven) {
    table_.reserve(4096);
    EXPECT_NEAR(static_cast<double>(taken()), 4096 * kText + 8192 * kSlot, kOverhead);
}

TEST_F(RoomOfATextTable, GrowsWithTheTextThatWouldTakeMoreThanHalfOfTheSlots) {
    addUpTo(16);
    const std::size_t ofHalf = taken();
    addUpTo(17);
    EXPECT_GT(taken() - ofHalf, 32 * kSlot + 17 * kText);
}

TEST_F(RoomOfATextTable, IsForTwiceAsManyTextsAtMostWhereItIsMadeForOneAtATime) {
    addUpTo(730, true);
    EXPECT_LT(taken(), 1024 * kText + 2048 * kSlot + 20'000); // the last are the texts' bytes
}

TEST_F(RoomOfATextTable, IsUsedToTheLastByte) {
    const std::string text(16383, 'x');
    table_.reserve(3);
    table_.add(text, 1);
    counted_memory::failAfter(0);
    table_.add("y", 2);
    EXPECT_TRUE(counted_memory::cancelFailure());
    counted_memory::failAfter(0);
    EXPECT_THROW(table_.add("z", 3), std::bad_alloc);
    EXPECT_FALSE(counted_memory::cancelFailure());
}

TEST(TextTable, HoldsTheEmptyText) {
    TextTable table;
    EXPECT_EQ(table.add("", 1), 0U);
    EXPECT_EQ(table.add("", 1), 0U);
    EXPECT_EQ(table.at(0), "");
}

TEST(TextTable, HoldsTextsOfAnyLength) {
    TextTable table;
    const std::string longText(100'000, 'x');
    table.add("short", 1);
    table.add(longText, 2);
    table.add("short too", 3);
    EXPECT_EQ(table.at(0), "short");
    EXPECT_EQ(table.at(1), longText);
    EXPECT_EQ(table.at(2), "short too");
}

TEST(TextTable, KeepsWhatIsNotedOfAText) {
    TextTable table;
    const std::uint32_t number = table.add("a", 1);
    EXPECT_EQ(table.markOf(number), 0U);
    table.markOf(number) = 7;
    table.reserve(1000);
    EXPECT_EQ(table.markOf(number), 7U);
}

TEST(TextTable, RefusesMoreTextsThanItMayHold) {
    TextTable table(2);
    table.add("a", 1);
    table.add("b", 2);
    EXPECT_THROW(table.add("c", 3), std::bad_alloc);
    EXPECT_EQ(table.add("b", 2), 1U);
    EXPECT_EQ(table.size(), 2U);
}

TEST(TextTable, MayHoldAsManyTextsAsItsSlotsCanTellApart) {
    EXPECT_EQ(TextTable::kMost, 0x80000000U); // twice as many slots are numbered in 32 bits
}

TEST(TextTable, FetchesWithoutHarmWhateverIsThere) {
    TextTable table;
    table.add("a", kSameHash);
    for (const std::uint64_t hash : {kSameHash, spreadHash(1), spreadHash(0)}) {
        table.fetchSlot(hash);
        table.fetchText(hash);
        table.fetchBytes(hash);
    }
    EXPECT_EQ(table.add("a", kSameHash), 0U);
}

} // namespace
