#include "blocks/RescanRoom.h"

#include <gtest/gtest.h>

namespace {

TEST(RescanRoom, BeginsWithoutAnyForTheHostsListWhichGrowsByEight) {
    const RescanRoom room;
    EXPECT_EQ(room.listed.physicalLength(), 0U);
    EXPECT_EQ(room.listed.growLength(), 8U);
}

TEST(RescanRoom, IsLentToTheFirstWhoAsks) {
    RescanRoom shared;
    const BorrowedRescanRoom first(shared);
    EXPECT_EQ(&*first, &shared);
    EXPECT_EQ(&first->previous, &shared.previous);
}

TEST(RescanRoom, IsNotLentTwiceAtATime) {
    RescanRoom shared;
    const BorrowedRescanRoom first(shared);
    const BorrowedRescanRoom second(shared);
    const BorrowedRescanRoom third(shared);
    EXPECT_NE(&*second, &shared);
    EXPECT_NE(&*third, &shared);
    EXPECT_NE(&*third, &*second);
}

TEST(RescanRoom, StaysLentWhenARoomInItsPlaceIsGivenBack) {
    RescanRoom shared;
    const BorrowedRescanRoom first(shared);
    { const BorrowedRescanRoom second(shared); }
    const BorrowedRescanRoom third(shared);
    EXPECT_NE(&*third, &shared);
}

TEST(RescanRoom, IsLentAgainOnceItIsGivenBack) {
    RescanRoom shared;
    { const BorrowedRescanRoom first(shared); }
    const BorrowedRescanRoom second(shared);
    EXPECT_EQ(&*second, &shared);
}

} // namespace
