#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

class BusyCommands : public ConsoleTest {
protected:
    Document& plan() { return *host_.documents().currentDocument(); }
};

TEST_F(BusyCommands, AnOpenDialogKeepsTheDocumentFromBeingQuiescent) {
    run("dialog on");
    EXPECT_FALSE(plan().isQuiescent());
    run("dialog off");
    EXPECT_TRUE(plan().isQuiescent());
}

TEST_F(BusyCommands, PendingInputsAreCounted) {
    run("pending 3");
    EXPECT_EQ(plan().pendingInputCount(), 3);
    EXPECT_THAT(failure("pending"), HasSubstr("N is missing"));
}

TEST_F(BusyCommands, ALockOfOnesOwnIsSeen) {
    run("lock");
    EXPECT_EQ(plan().lockMode(), KtAp::kWrite);
}

TEST_F(BusyCommands, ALockFromElsewhereIsSeenByThoseWhoAskForIt) {
    run("lock elsewhere");
    EXPECT_EQ(plan().lockMode(), KtAp::kNotLocked);
    EXPECT_EQ(plan().lockMode(true), KtAp::kWrite);
}

TEST_F(BusyCommands, UnlockGivesTheLatestLockBack) {
    run("lock");
    run("lock");
    run("unlock");
    EXPECT_EQ(plan().lockMode(), KtAp::kWrite);
    run("unlock");
    EXPECT_EQ(plan().lockMode(), KtAp::kNotLocked);
}

TEST_F(BusyCommands, UnlockRefusesADocumentThatIsNotLocked) {
    EXPECT_EQ(failure("unlock"), "the document is not locked");
}

} // namespace

} // namespace kthost
