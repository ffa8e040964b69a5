#include <KtEd.h>

#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

/// Filters see the records that the system's queue gives, whoever has posted them.
namespace kthost {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr UINT kMessage = 0x8001; // of applications' own; the system may refuse others
constexpr WPARAM kWide = 0xFEDCBA9876543210;

std::vector<MSG> seen;

bool note(MSG* message) {
    seen.push_back(*message);
    return false;
}

bool keep(MSG* message) {
    seen.push_back(*message);
    return true;
}

bool renumber(MSG* message) {
    message->message = kMessage + 1;
    return false;
}

class MessageRecord : public testing::Test {
protected:
    void SetUp() override {
        seen.clear();
        ktedRegisterFilterWinMsg(note);
    }

    std::vector<UINT> numbers() const {
        std::vector<UINT> all;
        all.reserve(seen.size());
        for (const MSG& message : seen) {
            all.push_back(message.message);
        }
        return all;
    }

    MainWindow window;
    MessageLoop loop;
};

TEST_F(MessageRecord, HasTheWindowAndTheMessage) {
    ASSERT_NE(PostMessageW(window.handle(), kMessage, 1, 2), 0);
    loop.pump();
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].hwnd, window.handle());
    EXPECT_EQ(seen[0].message, kMessage);
}

TEST_F(MessageRecord, HasBothParametersInAllTheir64Bits) {
    constexpr LPARAM kLowest = std::numeric_limits<LPARAM>::min();
    ASSERT_NE(PostMessageW(window.handle(), kMessage, kWide, kLowest), 0);
    loop.pump();
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].wParam, kWide);
    EXPECT_EQ(seen[0].lParam, kLowest);
}

TEST_F(MessageRecord, HasTheTimeThatTheQueueGaveIt) {
    ASSERT_NE(PostMessageW(window.handle(), kMessage, 0, 0), 0);
    MSG waiting{};
    ASSERT_NE(PeekMessageW(&waiting, window.handle(), 0, 0, PM_NOREMOVE), 0);
    loop.pump();
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_NE(seen[0].time, 0U);
    EXPECT_EQ(seen[0].time, waiting.time);
}

TEST_F(MessageRecord, IsOfNoMessageThatIsStillToCome) {
    PostMessageW(window.handle(), kMessage, 0, 0);
    EXPECT_THAT(seen, SizeIs(0));
}

TEST_F(MessageRecord, ComesInTheOrderOfPosting) {
    for (UINT i = 0; i < 5; ++i) {
        ASSERT_NE(PostMessageW(window.handle(), kMessage + i, 0, 0), 0);
    }
    loop.pump();
    EXPECT_THAT(numbers(), ElementsAre(kMessage, kMessage + 1, kMessage + 2, kMessage + 3, kMessage + 4));
}

TEST_F(MessageRecord, ComesFromAnotherThreadToo) {
    HWND handle = window.handle();
    std::thread([handle] { PostMessageW(handle, kMessage, kWide, 7); }).join();
    loop.pump();
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].wParam, kWide);
    EXPECT_EQ(seen[0].lParam, 7);
}

TEST_F(MessageRecord, ComesForTheThreadItselfWithoutAWindow) {
    ASSERT_NE(PostThreadMessageW(GetCurrentThreadId(), kMessage, 5, 6), 0);
    loop.pump();
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].hwnd, nullptr);
    EXPECT_EQ(seen[0].wParam, 5U);
}

TEST_F(MessageRecord, IsTheFiltersToChange) {
    seen.clear();
    ktedRemoveFilterWinMsg(note);
    ktedRegisterFilterWinMsg(renumber);
    ktedRegisterFilterWinMsg(keep);
    PostMessageW(window.handle(), kMessage, 0, 0);
    loop.pump();
    EXPECT_THAT(numbers(), ElementsAre(kMessage + 1));
}

TEST_F(MessageRecord, IsNoneForAMessageThatIsSent) {
    SendMessageW(window.handle(), kMessage, 0, 0); // straight to the window, past the queue
    loop.pump();
    EXPECT_THAT(seen, SizeIs(0));
}

} // namespace
} // namespace kthost
