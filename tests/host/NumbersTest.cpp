#include <KtApDocument.h>
#include <KtDb.h>
#include <KtRxModule.h>
#include <OrbxErrorStatus.h>

#include <gtest/gtest.h>

/// The numbers that the module and those it meets were compiled with.
namespace {

TEST(Numbers, OfTheModulesOwnStatuses) {
    EXPECT_EQ(static_cast<int>(Orbx::eOk), 0);
    EXPECT_EQ(static_cast<int>(Orbx::eInvalidBlockId), 16);
    EXPECT_EQ(static_cast<int>(Orbx::eDuplicateRecordId), 260);
    EXPECT_EQ(static_cast<int>(Orbx::eFilterRefused), 431);
    EXPECT_EQ(static_cast<int>(Orbx::eMissing), 506);
}

TEST(Numbers, OfTheWaysToOpenAnObject) {
    EXPECT_EQ(static_cast<int>(KtDb::kForRead), 0);
    EXPECT_EQ(static_cast<int>(KtDb::kForNotify), 2);
}

TEST(Numbers, OfTheLockModesThatLetAnIdleCheckPass) {
    EXPECT_EQ(static_cast<int>(KtAp::kNone), 0);
    EXPECT_EQ(static_cast<int>(KtAp::kNotLocked), 2);
}

TEST(Numbers, OfTheMessagesAndAnswersOfTheEntryPoint) {
    EXPECT_EQ(static_cast<int>(KtRx::kInitialise), 1);
    EXPECT_EQ(static_cast<int>(KtRx::kUnload), 2);
    EXPECT_EQ(static_cast<int>(KtRx::kDone), 0);
    EXPECT_EQ(static_cast<int>(KtRx::kError), 3);
}

} // namespace
