#include <KtGe.h>

#include <gtest/gtest.h>

namespace {

TEST(KtGePoint3d, StartsAtTheOriginAndIsItsCoordinates) {
    EXPECT_EQ(KtGePoint3d(), (KtGePoint3d{0, 0, 0}));
    EXPECT_NE(KtGePoint3d(), (KtGePoint3d{1, 0, 0}));
    EXPECT_NE(KtGePoint3d(), (KtGePoint3d{0, 1, 0}));
    EXPECT_NE(KtGePoint3d(), (KtGePoint3d{0, 0, 1}));
}

TEST(KtGeScale3d, StartsAtOneAndIsItsFactors) {
    EXPECT_EQ(KtGeScale3d(), (KtGeScale3d{1, 1, 1}));
    EXPECT_NE(KtGeScale3d(), (KtGeScale3d{2, 1, 1}));
    EXPECT_NE(KtGeScale3d(), (KtGeScale3d{1, 2, 1}));
    EXPECT_NE(KtGeScale3d(), (KtGeScale3d{1, 1, 2}));
}

} // namespace
