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

constexpr UINT kRecordedMessage = 0x8001; // of applications' own; the system may refuse others
constexpr WPARAM kWide = 0xFEDCBA9876543210;

std::vector<MSG> recorded;

bool note(MSG* message) {
    recorded.push_back(*message);
    return false;
}

bool recordMessage(MSG* message) {
    recorded.push_back(*message);
    return true;
}

bool renumber(MSG* message) {
    message->message = kRecordedMessage + 1;
    return false;
}

class MessageRecord : public testing::Test {
protected:
    void SetUp() override {
        recorded.clear();
        ktedRegisterFilterWinMsg(note);
    }

    std::vector<UINT> numbers() const {
        std::vector<UINT> all;
        all.reserve(recorded.size());
        for (const MSG& message : recorded) {
            all.push_back(message.message);
        }
        return all;
    }

    MainWindow window;
    MessageLoop loop;
};

TEST_F(MessageRecord, HasTheWindowAndTheMessage) {
    ASSERT_NE(PostMessageW(window.handle(), kRecordedMessage, 1, 2), 0);
    loop.pump();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_EQ(recorded[0].hwnd, window.handle());
    EXPECT_EQ(recorded[0].message, kRecordedMessage);
}

TEST_F(MessageRecord, HasBothParametersInAllTheir64Bits) {
    constexpr LPARAM kLowest = std::numeric_limits<LPARAM>::min();
    ASSERT_NE(PostMessageW(window.handle(), kRecordedMessage, kWide, kLowest), 0);
    loop.pump();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_EQ(recorded[0].wParam, kWide);
    EXPECT_EQ(recorded[0].lParam, kLowest);
}

TEST_F(MessageRecord, HasTheTimeThatTheQueueGaveIt) {
    ASSERT_NE(PostMessageW(window.handle(), kRecordedMessage, 0, 0), 0);
    MSG waiting{};
    ASSERT_NE(PeekMessageW(&waiting, window.handle(), 0, 0, PM_NOREMOVE), 0);
    loop.pump();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_NE(recorded[0].time, 0U);
    EXPECT_EQ(recorded[0].time, waiting.time);
}

TEST_F(MessageRecord, IsOfNoMessageThatIsStillToCome) {
    PostMessageW(window.handle(), kRecordedMessage, 0, 0);
    EXPECT_THAT(recorded, SizeIs(0));
}

TEST_F(MessageRecord, ComesInTheOrderOfPosting) {
    for (UINT i = 0; i < 5; ++i) {
        ASSERT_NE(PostMessageW(window.handle(), kRecordedMessage + i, 0, 0), 0);
    }
    loop.pump();
    EXPECT_THAT(numbers(), ElementsAre(kRecordedMessage, kRecordedMessage + 1, kRecordedMessage + 2,
                                       kRecordedMessage + 3, kRecordedMessage + 4));
}

TEST_F(MessageRecord, ComesFromAnotherThreadToo) {
    HWND handle = window.handle();
    std::thread([handle] { PostMessageW(handle, kRecordedMessage, kWide, 7); }).join();
    loop.pump();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_EQ(recorded[0].wParam, kWide);
    EXPECT_EQ(recorded[0].lParam, 7);
}

TEST_F(MessageRecord, ComesForTheThreadItselfWithoutAWindow) {
    ASSERT_NE(PostThreadMessageW(GetCurrentThreadId(), kRecordedMessage, 5, 6), 0);
    loop.pump();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_EQ(recorded[0].hwnd, nullptr);
    EXPECT_EQ(recorded[0].wParam, 5U);
}

TEST_F(MessageRecord, IsTheFiltersToChange) {
    recorded.clear();
    ktedRemoveFilterWinMsg(note);
    ktedRegisterFilterWinMsg(renumber);
    ktedRegisterFilterWinMsg(recordMessage);
    PostMessageW(window.handle(), kRecordedMessage, 0, 0);
    loop.pump();
    EXPECT_THAT(numbers(), ElementsAre(kRecordedMessage + 1));
}

TEST_F(MessageRecord, IsNoneForAMessageThatIsSent) {
    SendMessageW(window.handle(), kRecordedMessage, 0, 0); // straight to the window, past the queue
    loop.pump();
    EXPECT_THAT(recorded, SizeIs(0));
}

} // namespace
} // namespace kthost
