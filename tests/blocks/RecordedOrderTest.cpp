#include "blocks/RecordedOrder.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KtDbObjectId id(std::uint64_t value) {
    return KtDbObjectId(value);
}

class RecordedOrderTest : public testing::Test {
protected:
    void record(std::uint64_t container, std::initializer_list<std::uint64_t> references) {
        auto array = std::make_unique<KtDbObjectIdArray>(0, 8);
        for (const std::uint64_t reference : references) {
            array->append(id(reference));
        }
        references_.insert_or_assign(id(container), std::move(array));
    }

    bool follow(std::uint64_t container, std::uint64_t reference) {
        return order_.follow(order_.placeOf(id(container)), id(reference));
    }

    std::vector<std::uint64_t> rest() const {
        std::vector<KtDbObjectId> ids;
        order_.appendRest(ids);
        std::vector<std::uint64_t> values;
        for (const KtDbObjectId each : ids) {
            values.push_back(each.asUnsigned());
        }
        return values;
    }

    std::size_t recordedIn(std::uint64_t container) const { return references_.at(id(container))->length(); }

    RecordedReferences references_;
    RecordedOrder order_;
};

TEST_F(RecordedOrderTest, OfNothingIsFollowedFromTheStart) {
    EXPECT_TRUE(order_.start(references_));
    EXPECT_TRUE(order_.isAllFollowed());
    EXPECT_EQ(order_.followedCount(), 0U);
}

TEST_F(RecordedOrderTest, IsFollowedContainerByContainerInAnyTurn) {
    record(1, {10, 12});
    record(2, {11, 13});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_TRUE(follow(1, 10));
    EXPECT_TRUE(follow(2, 11));
    EXPECT_TRUE(follow(1, 12));
    EXPECT_EQ(order_.followedCount(), 3U);
    EXPECT_FALSE(order_.isAllFollowed());
    EXPECT_TRUE(follow(2, 13));
    EXPECT_TRUE(order_.isAllFollowed());
}

TEST_F(RecordedOrderTest, IsNotFollowedByWhatIsNotNext) {
    record(1, {10, 12});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_FALSE(follow(1, 12));
    EXPECT_TRUE(follow(1, 10));
    EXPECT_FALSE(follow(1, 10));
    EXPECT_EQ(order_.followedCount(), 1U);
}

TEST_F(RecordedOrderTest, IsNotFollowedBehindItsEnd) {
    record(1, {10});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_TRUE(follow(1, 10));
    EXPECT_FALSE(follow(1, 11));
}

TEST_F(RecordedOrderTest, WithAContainerOfNothingIsNeverAllFollowed) {
    record(1, {});
    record(2, {10});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_TRUE(follow(2, 10));
    EXPECT_FALSE(order_.isAllFollowed());
}

TEST_F(RecordedOrderTest, DoesNotStartWithAContainerThatHasNoArray) {
    record(1, {10});
    references_.insert_or_assign(id(2), nullptr);
    EXPECT_FALSE(order_.start(references_));
}

TEST_F(RecordedOrderTest, StartsAfreshEachTime) {
    record(1, {});
    record(2, {10, 11});
    ASSERT_TRUE(order_.start(references_));
    follow(2, 10);
    references_.clear();
    record(3, {12});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_EQ(order_.followedCount(), 0U);
    EXPECT_EQ(order_.placeOf(id(2)), IdNumbers::kNone);
    EXPECT_TRUE(follow(3, 12));
    EXPECT_TRUE(order_.isAllFollowed());
}

TEST_F(RecordedOrderTest, HasNoPlaceForWhatIsNeitherRecordedNorNoted) {
    record(1, {10});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_EQ(order_.placeOf(id(2)), IdNumbers::kNone);
    EXPECT_NE(order_.placeOf(id(1)), IdNumbers::kNone);
    EXPECT_EQ(order_.placeOf(KtDbObjectId()), IdNumbers::kNone);
}

TEST_F(RecordedOrderTest, NotesWhichContainersAreTheirOwn) {
    record(1, {10});
    record(2, {11});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_FALSE(order_.isOwnContainer(order_.placeOf(id(2))));
    EXPECT_EQ(order_.noteOwnContainer(id(2)), order_.placeOf(id(2)));
    EXPECT_TRUE(order_.isOwnContainer(order_.placeOf(id(2))));
    EXPECT_FALSE(order_.isOwnContainer(order_.placeOf(id(1))));
}

TEST_F(RecordedOrderTest, NotesAContainerInWhichNothingIsRecordedYet) {
    record(1, {10});
    ASSERT_TRUE(order_.start(references_));
    for (const std::uint64_t container : {5U, 4U}) {
        const std::uint32_t place = order_.noteOwnContainer(id(container));
        EXPECT_EQ(order_.placeOf(id(container)), place);
        EXPECT_TRUE(order_.isOwnContainer(place));
        EXPECT_FALSE(order_.follow(place, id(10)));
    }
    EXPECT_TRUE(follow(1, 10));
    EXPECT_TRUE(order_.isAllFollowed());
}

TEST_F(RecordedOrderTest, ForgetsItsNotesWhenItStartsAfresh) {
    record(1, {10});
    ASSERT_TRUE(order_.start(references_));
    order_.noteOwnContainer(id(1));
    ASSERT_TRUE(order_.start(references_));
    EXPECT_FALSE(order_.isOwnContainer(order_.placeOf(id(1))));
}

TEST_F(RecordedOrderTest, HasTheRestContainerByContainer) {
    record(1, {10, 13});
    record(2, {11, 12});
    ASSERT_TRUE(order_.start(references_));
    EXPECT_THAT(rest(), ElementsAre(10, 13, 11, 12));
    follow(1, 10);
    follow(2, 11);
    order_.noteOwnContainer(id(3));
    EXPECT_THAT(rest(), ElementsAre(13, 12));
    follow(1, 13);
    follow(2, 12);
    EXPECT_THAT(rest(), IsEmpty());
}

TEST_F(RecordedOrderTest, AppendsTheRestBehindWhatIsThere) {
    record(1, {10});
    ASSERT_TRUE(order_.start(references_));
    std::vector<KtDbObjectId> ids{id(7)};
    order_.appendRest(ids);
    EXPECT_THAT(ids, ElementsAre(id(7), id(10)));
}

TEST_F(RecordedOrderTest, CutsWhatWasNotFollowed) {
    record(1, {10, 12, 13});
    record(2, {11});
    ASSERT_TRUE(order_.start(references_));
    order_.noteOwnContainer(id(3));
    follow(1, 10);
    order_.cutRest();
    EXPECT_EQ(recordedIn(1), 1U);
    EXPECT_EQ((*references_.at(id(1)))[0], id(10));
    EXPECT_EQ(recordedIn(2), 0U);
}

TEST_F(RecordedOrderTest, IsFollowedNoFurtherOnceItIsCut) {
    record(1, {10, 12});
    ASSERT_TRUE(order_.start(references_));
    order_.noteOwnContainer(id(1));
    follow(1, 10);
    order_.cutRest();
    EXPECT_FALSE(follow(1, 12));
    EXPECT_THAT(rest(), IsEmpty());
    EXPECT_TRUE(order_.isOwnContainer(order_.placeOf(id(1))));
}

} // namespace
