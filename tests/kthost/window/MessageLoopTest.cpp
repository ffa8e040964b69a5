#include "kthost/window/MessageLoop.h"

#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/window/MainWindow.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Messages of applications' own; those below may be refused by the system.
constexpr UINT kFirst = 0x8000;

std::string numberOf(const MSG& message) {
    return std::to_string(message.message - kFirst);
}

std::vector<std::string> seen;
std::string filterRanInside;

bool pass(MSG* message) {
    seen.push_back("pass " + numberOf(*message));
    filterRanInside = ModuleCodeScope::innermost()->text();
    return false;
}

bool keep(MSG* message) {
    seen.push_back("keep " + numberOf(*message));
    return true;
}

bool last(MSG* message) {
    seen.push_back("last " + numberOf(*message));
    return false;
}

bool removeItself(MSG* /*message*/) {
    seen.emplace_back("remove itself");
    ktedRemoveFilterWinMsg(removeItself);
    return false;
}

bool removeLast(MSG* /*message*/) {
    seen.emplace_back("remove last");
    ktedRemoveFilterWinMsg(last);
    return false;
}

bool addLast(MSG* /*message*/) {
    seen.emplace_back("add last");
    ktedRegisterFilterWinMsg(last);
    return false;
}

bool postOnce(MSG* message) {
    seen.push_back("post " + numberOf(*message));
    if (message->message == kFirst + 1) {
        PostMessageW(message->hwnd, kFirst + 2, 0, 0);
    }
    return true;
}

bool postAlways(MSG* message) {
    PostMessageW(message->hwnd, kFirst + 1, 0, 0);
    return true;
}

bool pumpInside(MSG* message) {
    seen.push_back("pump " + numberOf(*message));
    MessageLoop::current()->pump();
    return true;
}

class Loop : public testing::Test {
protected:
    void SetUp() override { seen.clear(); }

    void TearDown() override { Faults::instance().reset(); }

    void post(UINT number) { ASSERT_NE(PostMessageW(window.handle(), kFirst + number, 5, 6), 0); }

    MainWindow window;
    MessageLoop loop;
};

TEST_F(Loop, HandsNothingOverBeforeItIsPumped) {
    ktedRegisterFilterWinMsg(pass);
    post(1);
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(Loop, HandsMessagesOverInTheOrderOfPosting) {
    ktedRegisterFilterWinMsg(pass);
    post(1);
    post(2);
    EXPECT_EQ(loop.pump(), 2U);
    EXPECT_THAT(seen, ElementsAre("pass 1", "pass 2"));
}

TEST_F(Loop, HandsTheWholeMessageOver) {
    static MSG received;
    static constexpr auto keepMessage = [](MSG* message) {
        received = *message;
        return true;
    };
    ktedRegisterFilterWinMsg(keepMessage);
    post(7);
    loop.pump();
    EXPECT_EQ(received.hwnd, window.handle());
    EXPECT_EQ(received.message, kFirst + 7);
    EXPECT_EQ(received.wParam, 5U);
    EXPECT_EQ(received.lParam, 6);
}

TEST_F(Loop, AsksFiltersInTheOrderOfTheirRegistration) {
    ktedRegisterFilterWinMsg(last);
    ktedRegisterFilterWinMsg(pass);
    post(1);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("last 1", "pass 1"));
}

TEST_F(Loop, AsksNoFilterBehindOneThatKeptTheMessage) {
    ktedRegisterFilterWinMsg(pass);
    ktedRegisterFilterWinMsg(keep);
    ktedRegisterFilterWinMsg(last);
    post(1);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("pass 1", "keep 1"));
}

TEST_F(Loop, SaysWhetherAFilterKeptTheMessage) {
    MSG message{};
    EXPECT_FALSE(loop.dispatch(message));
    ktedRegisterFilterWinMsg(keep);
    EXPECT_TRUE(loop.dispatch(message));
}

TEST_F(Loop, LetsAFilterRemoveItself) {
    ktedRegisterFilterWinMsg(removeItself);
    ktedRegisterFilterWinMsg(last);
    post(1);
    post(2);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("remove itself", "last 1", "last 2"));
}

TEST_F(Loop, AsksNoFilterThatWasRemovedByTheOneBefore) {
    ktedRegisterFilterWinMsg(removeLast);
    ktedRegisterFilterWinMsg(last);
    post(1);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("remove last"));
}

TEST_F(Loop, AsksAFilterThatWasAddedMeanwhileFromTheNextMessageOn) {
    ktedRegisterFilterWinMsg(addLast);
    post(1);
    post(2);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("add last", "add last", "last 2"));
}

TEST_F(Loop, HandsOverWhatIsPostedMeanwhile) {
    ktedRegisterFilterWinMsg(postOnce);
    post(1);
    EXPECT_EQ(loop.pump(), 2U);
    EXPECT_THAT(seen, ElementsAre("post 1", "post 2"));
}

TEST_F(Loop, IsNotHeldForEverByAFilterThatKeepsPosting) {
    ktedRegisterFilterWinMsg(postAlways);
    post(1);
    EXPECT_EQ(loop.pump(), static_cast<std::size_t>(MessageLoop::kMostRounds));
    EXPECT_EQ(loop.queue().size(), 1U);
}

TEST_F(Loop, CanBePumpedInsideAFilter) {
    ktedRegisterFilterWinMsg(pumpInside);
    post(1);
    post(2);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("pump 1", "pump 2"));
}

TEST_F(Loop, CountsAFilterAsRunningModuleCode) {
    ktedRegisterFilterWinMsg(pass);
    post(1);
    loop.pump();
    EXPECT_EQ(filterRanInside, "a message filter");
    EXPECT_EQ(ModuleCodeScope::innermost(), nullptr);
}

TEST_F(Loop, RefusesANullFilter) {
    EXPECT_FALSE(ktedRegisterFilterWinMsg(nullptr));
    EXPECT_FALSE(ktedRemoveFilterWinMsg(nullptr));
}

TEST_F(Loop, RefusesAFilterTwice) {
    EXPECT_TRUE(ktedRegisterFilterWinMsg(pass));
    EXPECT_FALSE(ktedRegisterFilterWinMsg(pass));
}

TEST_F(Loop, RefusesToRemoveAFilterThatIsNotRegistered) {
    EXPECT_FALSE(ktedRemoveFilterWinMsg(pass));
}

TEST_F(Loop, RefusesAFilterWhenAFaultIsAskedFor) {
    Faults::instance().fail(HostCall::registerFilter, 1, Orbx::eFilterRefused);
    EXPECT_FALSE(ktedRegisterFilterWinMsg(pass));
    post(1);
    loop.pump();
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(Loop, KeepsAFilterWhenAFaultIsAskedForAtItsRemoval) {
    ktedRegisterFilterWinMsg(pass);
    Faults::instance().fail(HostCall::removeFilter, 1, Orbx::eFilterRefused);
    EXPECT_FALSE(ktedRemoveFilterWinMsg(pass));
    post(1);
    loop.pump();
    EXPECT_THAT(seen, ElementsAre("pass 1"));
}

TEST_F(Loop, HandsNothingOverForAWindowThatHasGone) {
    ktedRegisterFilterWinMsg(pass);
    post(1);
    window.setPresent(false);
    EXPECT_EQ(loop.pump(), 0U);
    EXPECT_THAT(seen, IsEmpty());
}

TEST(LoopEnd, LeavesNowhereToRegisterAFilter) {
    { const MessageLoop loop; }
    EXPECT_FALSE(ktedRegisterFilterWinMsg(pass));
}

TEST(WindowEnd, LeavesNowhereToPostTo) {
    HWND handle = nullptr;
    {
        const MainWindow window;
        handle = window.handle();
    }
    EXPECT_EQ(PostMessageW(handle, kFirst + 1, 0, 0), 0);
}

} // namespace
} // namespace kthost
