#include <AppFramework.h>

#include "kthost/runtime/ModuleLoader.h"
#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"
#include "kthost/window/RegisteredMessages.h"
#include "tests/kthost/modules/TestModules.h"

#include <gmock/gmock.h>

#include <string>

namespace kthost {
namespace {

using testing::HasSubstr;

TEST(RegisteredMessage, HasTheSameIdForTheSameName) {
    const UINT id = RegisterWindowMessageW(L"WM_TEST_SAME");
    EXPECT_EQ(RegisterWindowMessageW(L"WM_TEST_SAME"), id);
}

TEST(RegisteredMessage, HasAnotherIdForAnotherName) {
    EXPECT_NE(RegisterWindowMessageW(L"WM_TEST_ONE"), RegisterWindowMessageW(L"WM_TEST_OTHER"));
}

TEST(RegisteredMessage, HasAnIdInTheRangeOfRegisteredMessages) {
    const UINT id = RegisterWindowMessageW(L"WM_TEST_RANGE");
    EXPECT_GE(id, 0xC000U);
    EXPECT_LE(id, 0xFFFFU);
}

TEST(RegisteredMessage, NeedsAName) {
    EXPECT_EQ(RegisterWindowMessageW(L""), 0U);
    EXPECT_EQ(RegisterWindowMessageW(nullptr), 0U);
}

TEST(RegisteredMessage, IsKnownByItsName) {
    EXPECT_EQ(registeredMessageName(RegisterWindowMessageW(L"WM_TEST_NAMED")), L"WM_TEST_NAMED");
}

TEST(RegisteredMessage, HasNoNameWhenItsIdWasNeverGiven) {
    EXPECT_EQ(registeredMessageName(0), L"");
    EXPECT_EQ(registeredMessageName(0xFFFF), L"");
}

constexpr UINT kMessage = 0x8001; // an application's own; the system may refuse others

class Window : public testing::Test {
protected:
    MainWindow window;
    MessageLoop loop;
};

TEST_F(Window, IsTheThreadsMainWindow) {
    EXPECT_EQ(AfxGetThread()->m_pMainWnd->m_hWnd, window.handle());
}

TEST_F(Window, CanBeAbsent) {
    window.setPresent(false);
    EXPECT_EQ(AfxGetThread()->m_pMainWnd, nullptr);
}

TEST_F(Window, CanStandInAThreadThatTheFrameworkDoesNotKnow) {
    window.setThreadKnown(false);
    EXPECT_EQ(AfxGetThread(), nullptr);
}

TEST_F(Window, TakesPostedMessages) {
    EXPECT_NE(PostMessageW(window.handle(), kMessage, 0, 0), 0);
    EXPECT_EQ(loop.queue().size(), 1U);
}

TEST_F(Window, TakesNoMessagesWhileAbsent) {
    window.setPresent(false);
    EXPECT_EQ(PostMessageW(window.handle(), kMessage, 0, 0), 0);
}

TEST_F(Window, TakesNoMessagesForAnotherWindow) {
    int somethingElse = 0;
    EXPECT_EQ(PostMessageW(reinterpret_cast<HWND>(&somethingElse), kMessage, 0, 0), 0);
    EXPECT_TRUE(loop.queue().empty());
}

TEST_F(Window, HasNoInputWaitingUnlessToldSo) {
    EXPECT_EQ(GetInputState(), 0);
}

TEST_F(Window, HasInputWaitingWhenToldSo) {
    window.setInputWaiting(true);
    EXPECT_NE(GetInputState(), 0);
}

TEST_F(Window, KeepsMessageBoxes) {
    testing::internal::CaptureStderr();
    AfxMessageBox(L"Unable to go on", 0x10, 3);
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(window.messageBoxes().size(), 1U);
    EXPECT_EQ(window.messageBoxes()[0].text, L"Unable to go on");
    EXPECT_EQ(window.messageBoxes()[0].type, 0x10U);
    EXPECT_EQ(window.messageBoxes()[0].helpId, 3U);
}

TEST_F(Window, PrintsMessageBoxesToStandardError) {
    testing::internal::CaptureStderr();
    AfxMessageBox(L"Gr\u00FC\u00DFe", 0, 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Gr\xC3\xBC\xC3\x9F"
                                                                  "e"));
}

TEST_F(Window, AnswersMessageBoxesWithOk) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxMessageBox(L"Go on?", 0, 0), 1);
    testing::internal::GetCapturedStderr();
}

TEST(WindowEnd, LeavesNoThreadAndNoInput) {
    { const MainWindow window; }
    EXPECT_EQ(AfxGetThread(), nullptr);
    EXPECT_EQ(GetInputState(), 0);
}

TEST(ModuleHandle, IsThatOfALoadedModule) {
    ModuleLoader modules;
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_EQ(GetModuleHandleW(L"GoodModule.kmx"), modules.find("GoodModule.kmx")->handle());
}

TEST(ModuleHandle, IsNullForAModuleThatIsNotLoaded) {
    const ModuleLoader modules;
    EXPECT_EQ(GetModuleHandleW(L"GoodModule.kmx"), nullptr);
}

} // namespace
} // namespace kthost
