#include "notify/OrderedChunks.h"

#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <random>
#include <utility>

/// What elements in chunks cost, counted in comparisons and in moves.
namespace {

std::uint64_t comparisons = 0;
std::uint64_t moves = 0;

/// A number that counts how often it is moved.
class Moved {
public:
    explicit Moved(std::uint32_t value) : value_(value) {}

    Moved(Moved&& other) noexcept : value_(other.value_) { ++moves; }

    Moved& operator=(Moved&& other) noexcept {
        value_ = other.value_;
        ++moves;
        return *this;
    }

    Moved(const Moved&) = delete;
    Moved& operator=(const Moved&) = delete;
    ~Moved() = default;

    const std::uint32_t& value() const { return value_; }

private:
    std::uint32_t value_;
};

struct CountingOrder {
    using Key = std::uint32_t;

    static const Key& keyOf(const Moved& element) { return element.value(); }

    static bool isLess(Key left, Key right) {
        ++comparisons;
        return left < right;
    }
};

constexpr std::uint32_t kElements = 4096;

class CostOfChunks : public testing::Test {
protected:
    void fill() {
        for (std::uint32_t value = 0; value < kElements; ++value) {
            chunks_.insert(Moved(value));
        }
        comparisons = 0;
        moves = 0;
    }

    /// A number below kElements; each comes once.
    static std::uint32_t mixed(std::uint32_t i) { return i * 2477 % kElements; }

    OrderedChunks<Moved, CountingOrder> chunks_;
};

TEST_F(CostOfChunks, FindingInAscendingOrderIsAFewComparisonsEach) {
    fill();
    for (std::uint32_t value = 0; value < kElements; ++value) {
        ASSERT_TRUE(chunks_.contains(value));
    }
    EXPECT_LE(comparisons, 6 * kElements);
}

TEST_F(CostOfChunks, FindingTheSameAgainIsAFewComparisons) {
    fill();
    for (const std::uint32_t value : {0U, 1U, 2000U, kElements - 1}) {
        chunks_.find(value);
        comparisons = 0;
        ASSERT_TRUE(chunks_.contains(value));
        EXPECT_LE(comparisons, 5U) << value;
    }
}

TEST_F(CostOfChunks, FindingInNoOrderIsAFewComparisonsForEachDoubling) {
    fill();
    for (std::uint32_t i = 0; i < kElements; ++i) {
        ASSERT_TRUE(chunks_.contains(mixed(i)));
    }
    EXPECT_LE(comparisons, 17 * kElements); // twelve doublings
}

TEST_F(CostOfChunks, InsertingInAscendingOrderIsAFewComparisonsAndMovesEach) {
    comparisons = 0;
    moves = 0;
    for (std::uint32_t value = 0; value < kElements; ++value) {
        chunks_.insert(Moved(value));
    }
    EXPECT_LE(comparisons, 5 * kElements);
    EXPECT_LE(moves, 3 * kElements);
}

TEST_F(CostOfChunks, InsertingInNoOrderMovesAChunkAtMost) {
    moves = 0;
    for (std::uint32_t i = 0; i < kElements; ++i) {
        chunks_.insert(Moved(mixed(i)));
    }
    EXPECT_LE(moves, 32 * kElements);
}

TEST_F(CostOfChunks, InsertingInNoOrderIsAnAllocationForEachChunkAndFewBesides) {
    const FailingFiltered counting([](const void*) { return true; }, 0);
    for (std::uint32_t i = 0; i < kElements; ++i) {
        chunks_.insert(Moved(mixed(i)));
    }
    EXPECT_LE(FailingFiltered::count(), 120U); // a hundred chunks
}

constexpr std::uint32_t kFull = 64; // in a chunk

TEST_F(CostOfChunks, InsertingInAscendingOrderFillsTheChunks) {
    const std::size_t before = livingAllocations();
    for (std::uint32_t value = 0; value < kElements; ++value) {
        chunks_.insert(Moved(value));
    }
    EXPECT_EQ(livingAllocations() - before, 1 + kElements / kFull); // and the list of chunks
}

Moved numbered(std::size_t index) {
    return Moved(static_cast<std::uint32_t>(index));
}

TEST_F(CostOfChunks, FillingIsAnAllocationForEachChunkAndOneForAll) {
    const FailingFiltered counting([](const void*) { return true; }, 0);
    chunks_.fill(kFull + 1, numbered);
    EXPECT_EQ(FailingFiltered::count(), 3U);
}

TEST_F(CostOfChunks, FillingLeavesNoRoomForAnotherChunk) {
    chunks_.fill(kFull, numbered);
    const FailingFiltered counting([](const void*) { return true; }, 0);
    chunks_.insert(numbered(kFull));
    EXPECT_EQ(FailingFiltered::count(), 2U);
}

TEST_F(CostOfChunks, FillingAsksForNoMoreThanAChunksRoomForEach) {
    const FailingAllocation failing(2, kFull * sizeof(Moved));
    EXPECT_THROW(chunks_.fill(std::size_t{2} * kFull, numbered), std::bad_alloc);
}

TEST_F(CostOfChunks, ErasingInNoOrderMovesAChunkAtMost) {
    fill();
    for (std::uint32_t i = 0; i < kElements; ++i) {
        ASSERT_EQ(chunks_.erase(mixed(i)), 1U);
    }
    EXPECT_LE(moves, 32 * kElements);
}

TEST_F(CostOfChunks, TwoChunksAreJoinedAsSoonAsTheyFillHalfOfOne) {
    chunks_.fill(std::size_t{2} * kFull, numbered);
    for (std::uint32_t value = kFull / 4; value < kFull; ++value) {
        chunks_.erase(kFull + value);
    }
    for (std::uint32_t value = kFull / 4 + 1; value < kFull; ++value) {
        chunks_.erase(value);
    }
    const std::size_t before = livingAllocations();
    chunks_.erase(kFull / 4);
    EXPECT_EQ(livingAllocations(), before - 1);
}

TEST_F(CostOfChunks, WhatIsLeftOfManyLiesTogether) {
    fill();
    for (std::uint32_t value = kElements; value-- > 0;) {
        if (value % 64 != 0) {
            chunks_.erase(value);
        }
    }
    comparisons = 0;
    for (std::uint32_t value = 0; value < kElements; value += 64) {
        ASSERT_TRUE(chunks_.contains(value));
    }
    EXPECT_LE(comparisons, 6 * chunks_.size());
}

} // namespace
