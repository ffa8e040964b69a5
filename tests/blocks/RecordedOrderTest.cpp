#include "blocks/RecordedOrder.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordedOrderTest : public testing::Test {
protected:
    /// References 10, 11, ... in containers 1 and 2 by turns.
    void fill(std::uint64_t count) {
        for (std::uint64_t i = 0; i < count; ++i) {
            order_.append(KtDbObjectId(10 + i), KtDbObjectId(1 + i % 2));
        }
    }

    bool has(std::initializer_list<std::uint64_t> values) const {
        std::vector<KtDbObjectId> ids;
        ids.reserve(values.size());
        for (const std::uint64_t value : values) {
            ids.emplace_back(value);
        }
        return order_.hasReferences(ids);
    }

    std::vector<KtDbObjectId> restFrom(std::size_t first) const {
        std::vector<KtDbObjectId> rest;
        order_.appendRest(first, rest);
        return rest;
    }

    void enter(std::uint64_t container) {
        references_.emplace(KtDbObjectId(container), std::make_unique<KtDbObjectIdArray>(0, 8));
    }

    RecordedReferences references_;
    RecordedOrder order_;
};

TEST_F(RecordedOrderTest, StartsEmptyAndIsThatOfNothing) {
    EXPECT_EQ(order_.size(), 0U);
    EXPECT_TRUE(has({}));
    EXPECT_TRUE(order_.isOf(references_));
}

TEST_F(RecordedOrderTest, IsNotThatOfContainersThatCameOrWentBehindIt) {
    enter(1);
    EXPECT_FALSE(order_.isOf(references_));
    order_.settle(references_);
    EXPECT_TRUE(order_.isOf(references_));
    references_.erase(KtDbObjectId(1));
    EXPECT_FALSE(order_.isOf(references_));
}

TEST_F(RecordedOrderTest, IsThatOfNoneUntilItIsSettled) {
    order_.unsettle();
    EXPECT_FALSE(order_.isOf(references_));
    order_.settle(references_);
    EXPECT_TRUE(order_.isOf(references_));
}

TEST_F(RecordedOrderTest, HasTheseReferencesAndNoOthers) {
    fill(3);
    EXPECT_TRUE(has({10, 11, 12}));
    EXPECT_FALSE(has({10, 11}));
    EXPECT_FALSE(has({10, 11, 12, 13}));
    EXPECT_FALSE(has({10, 11, 13}));
    EXPECT_FALSE(has({9, 11, 12}));
    EXPECT_FALSE(has({}));
}

TEST_F(RecordedOrderTest, TellsWhichReferenceLiesWhere) {
    fill(3);
    EXPECT_EQ(order_.size(), 3U);
    EXPECT_EQ(order_.referenceAt(2), KtDbObjectId(12));
    EXPECT_TRUE(order_.isAt(1, KtDbObjectId(11), KtDbObjectId(2)));
    EXPECT_FALSE(order_.isAt(1, KtDbObjectId(11), KtDbObjectId(1)));
    EXPECT_FALSE(order_.isAt(1, KtDbObjectId(12), KtDbObjectId(2)));
    EXPECT_FALSE(order_.isAt(2, KtDbObjectId(11), KtDbObjectId(2)));
    EXPECT_FALSE(order_.isAt(3, KtDbObjectId(13), KtDbObjectId(2)));
}

TEST_F(RecordedOrderTest, AppendsTheRestBehindWhatIsThere) {
    fill(4);
    EXPECT_THAT(restFrom(4), IsEmpty());
    EXPECT_THAT(restFrom(2), ElementsAre(KtDbObjectId(12), KtDbObjectId(13)));
    std::vector<KtDbObjectId> rest{KtDbObjectId(7)};
    order_.appendRest(3, rest);
    EXPECT_THAT(rest, ElementsAre(KtDbObjectId(7), KtDbObjectId(13)));
}

TEST_F(RecordedOrderTest, ForgetsWhatLiesBehind) {
    fill(4);
    order_.cut(1);
    EXPECT_TRUE(has({10}));
    EXPECT_FALSE(order_.isAt(1, KtDbObjectId(11), KtDbObjectId(2)));
    order_.append(KtDbObjectId(20), KtDbObjectId(3));
    EXPECT_TRUE(has({10, 20}));
}

TEST_F(RecordedOrderTest, KeepsWhatItHasWhenRoomIsMade) {
    fill(3);
    order_.reserve(100);
    EXPECT_TRUE(has({10, 11, 12}));
    order_.reserve(1);
    EXPECT_TRUE(has({10, 11, 12}));
    EXPECT_TRUE(order_.isAt(2, KtDbObjectId(12), KtDbObjectId(1)));
}

} // namespace
