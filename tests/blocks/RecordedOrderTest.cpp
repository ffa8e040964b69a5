#include "blocks/RecordedOrder.h"

#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace {

using Ids = std::vector<KtDbObjectId>;

constexpr KtDbObjectId kFirst(10);
constexpr KtDbObjectId kSecond(11);
constexpr KtDbObjectId kHere(1);
constexpr KtDbObjectId kThere(2);

RecordedOrder ofTwo() {
    RecordedOrder order;
    order.append(kFirst, kThere);
    order.append(kSecond, kHere);
    return order;
}

TEST(RecordedOrder, HasTheReferencesThatWereAppended) {
    const RecordedOrder order = ofTwo();
    EXPECT_EQ(order.size(), 2U);
    EXPECT_EQ(order.referenceAt(1), kSecond);
    EXPECT_TRUE(order.hasReferences(Ids{kFirst, kSecond}));
}

TEST(RecordedOrder, HasNotFewerOrMoreReferences) {
    const RecordedOrder order = ofTwo();
    EXPECT_FALSE(order.hasReferences(Ids{kFirst}));
    EXPECT_FALSE(order.hasReferences(Ids{kFirst, kSecond, KtDbObjectId(12)}));
    EXPECT_FALSE(order.hasReferences(Ids{kSecond, kFirst}));
}

TEST(RecordedOrder, KnowsWhereEachLies) {
    const RecordedOrder order = ofTwo();
    EXPECT_TRUE(order.isAt(1, kSecond, kHere));
    EXPECT_FALSE(order.isAt(1, kSecond, kThere));
    EXPECT_FALSE(order.isAt(1, kFirst, kHere));
    EXPECT_FALSE(order.isAt(2, kSecond, kHere));
}

TEST(RecordedOrder, GivesTheRestBehindWhatIsThere) {
    Ids rest{kHere};
    ofTwo().appendRest(1, rest);
    EXPECT_EQ(rest, (Ids{kHere, kSecond}));
}

TEST(RecordedOrder, MakesRoomForTheRestOnlyAndOnce) {
    Ids rest{kHere};
    ofTwo().appendRest(1, rest);
    EXPECT_EQ(rest.capacity(), 2U);
}

TEST(RecordedOrder, ForgetsWhatIsCutOff) {
    RecordedOrder order = ofTwo();
    order.cut(1);
    EXPECT_TRUE(order.hasReferences(Ids{kFirst}));
}

TEST(RecordedOrder, IsOfNothingRecordedAtFirst) {
    EXPECT_TRUE(RecordedOrder().isOf(RecordedReferences()));
}

TEST(RecordedOrder, IsOfContainersUntilTheyAreOthers) {
    RecordedReferences references;
    RecordedOrder order;
    order.settle(references);
    EXPECT_TRUE(order.isOf(references));
    references.emplace(kHere, std::make_unique<KtDbObjectIdArray>());
    EXPECT_FALSE(order.isOf(references));
}

TEST(RecordedOrder, IsOfNothingUntilItIsSettledAgain) {
    const RecordedReferences references;
    RecordedOrder order;
    order.unsettle();
    EXPECT_FALSE(order.isOf(references));
    order.settle(references);
    EXPECT_TRUE(order.isOf(references));
}

TEST(RecordedOrder, NeedsNoMemoryWhereRoomWasMade) {
    RecordedOrder order;
    order.reserve(20);
    const std::size_t allocations = allocationsIn([&] {
        for (std::uint64_t i = 1; i <= 20; ++i) {
            order.append(KtDbObjectId(i), kHere);
        }
    });
    EXPECT_EQ(allocations, 0U);
}

TEST(RecordedOrder, MakesRoomOnce) {
    RecordedOrder order;
    order.reserve(20);
    EXPECT_EQ(allocationsIn([&] { order.reserve(20); }), 0U);
}

} // namespace
