#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"
#include "kthost/window/RegisteredMessages.h"

#include <gtest/gtest.h>

#include <string>

/// The main window as the system knows it, and what else the system says of itself.
namespace kthost {
namespace {

class HiddenWindow : public testing::Test {
protected:
    MainWindow window;
    MessageLoop loop;
};

TEST_F(HiddenWindow, IsAWindowOfTheSystems) {
    EXPECT_NE(IsWindow(window.handle()), 0);
}

TEST_F(HiddenWindow, IsNotToBeSeen) {
    EXPECT_EQ(IsWindowVisible(window.handle()), 0);
}

TEST_F(HiddenWindow, BelongsToTheThreadThatMadeIt) {
    DWORD process = 0;
    EXPECT_EQ(GetWindowThreadProcessId(window.handle(), &process), GetCurrentThreadId());
    EXPECT_EQ(process, GetCurrentProcessId());
}

TEST_F(HiddenWindow, IsNoneOfTheSystemsOnceItIsAbsent) {
    HWND handle = window.handle();
    window.setPresent(false);
    EXPECT_EQ(IsWindow(handle), 0);
}

TEST_F(HiddenWindow, IsGivenWhatNoFilterKeeps) {
    PostMessageW(window.handle(), WM_CLOSE, 0, 0);
    loop.pump();
    EXPECT_EQ(IsWindow(window.handle()), 0); // that is what a window does on its own when told to close
}

TEST(RegisteredMessage, IsTheSystemsAndSharedWithItsFormats) {
    const UINT message = RegisterWindowMessageW(L"WM_TEST_OF_THE_SYSTEM");
    EXPECT_EQ(RegisterClipboardFormatW(L"WM_TEST_OF_THE_SYSTEM"), message);
    EXPECT_EQ(RegisterWindowMessageA("WM_TEST_OF_THE_SYSTEM"), message);
}

TEST(RegisteredMessage, HasItsNameHoweverLongTheSystemLetsItBe) {
    const std::wstring name(255, L'N');
    EXPECT_EQ(registeredMessageName(RegisterWindowMessageW(name.c_str())), name);
}

TEST(ModuleHandle, OfTheProgramIsTheSystems) {
    HMODULE here = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, &here);
    EXPECT_EQ(GetModuleHandleW(nullptr), here);
    EXPECT_NE(GetModuleHandleW(L"kthostcore.dll"), nullptr);
}

} // namespace
} // namespace kthost
