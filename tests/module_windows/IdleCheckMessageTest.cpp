#include "tests/module_windows/HighMemory.h"
#include "tests/module_windows/ModuleInMemory.h"

#include <KtEd.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

/// The message that the module posts at the end of a command, on its way through the system's queue.
namespace {

using testing::SizeIs;

int calls = 0;

void count() {
    ++calls;
}

std::vector<MSG> seen;

bool note(MSG* message) {
    seen.push_back(*message);
    return false;
}

class IdleCheckMessage : public ModuleInMemory {
protected:
    void SetUp() override {
        ModuleInMemory::SetUp();
        calls = 0;
        seen.clear();
        // The module's own filter keeps the message, so this one has to come before it.
        ASSERT_TRUE(ktedRegisterFilterWinMsg(note));
    }

    /// What a command in the document has posted, as a filter sees it.
    void runAndPump(kthost::Document& document) {
        attach(document, count);
        runCommand(document);
        host_.loop().pump();
    }
};

TEST_F(IdleCheckMessage, HasTheSystemsNumberForItsName) {
    runAndPump(open(L"plan"));
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].message, RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK"));
}

TEST_F(IdleCheckMessage, IsKnownToTheSystemByItsName) {
    runAndPump(open(L"plan"));
    ASSERT_THAT(seen, SizeIs(1));
    wchar_t name[64] = {};
    GetClipboardFormatNameW(seen[0].message, name, 64); // messages and formats share one table
    EXPECT_STREQ(name, L"WM_KTDX_IDLE_CHECK");
}

TEST_F(IdleCheckMessage, IsForTheHostsMainWindow) {
    runAndPump(open(L"plan"));
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].hwnd, host_.window().handle());
    EXPECT_NE(IsWindow(seen[0].hwnd), 0);
}

TEST_F(IdleCheckMessage, LeadsBackToTheDocument) {
    kthost::Document& document = open(L"plan");
    runAndPump(document);
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].wParam, reinterpret_cast<WPARAM>(&document));
    EXPECT_EQ(seen[0].lParam, 0);
    EXPECT_EQ(calls, 1);
}

TEST_F(IdleCheckMessage, LeadsBackToADocumentAboveFourGigabytes) {
    const HighMemory high(sizeof(kthost::Document));
    kthost::Document& document = open(L"plan");
    ASSERT_GT(reinterpret_cast<std::uintptr_t>(&document), std::uintptr_t{0xFFFFFFFF});
    runAndPump(document);
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].wParam, reinterpret_cast<WPARAM>(&document));
    EXPECT_EQ(calls, 1);
}

TEST_F(IdleCheckMessage, WaitsInTheSystemsQueue) {
    kthost::Document& document = open(L"plan");
    attach(document, count);
    runCommand(document);
    MSG waiting{};
    EXPECT_NE(PeekMessageW(&waiting, host_.window().handle(), 0, 0, PM_NOREMOVE), 0);
    EXPECT_EQ(waiting.wParam, reinterpret_cast<WPARAM>(&document));
}

TEST_F(IdleCheckMessage, GoesWithItsWindow) {
    kthost::Document& document = open(L"plan");
    attach(document, count);
    runCommand(document);
    host_.window().setPresent(false);
    host_.window().setPresent(true);
    host_.loop().pump();
    EXPECT_EQ(calls, 0);
}

} // namespace
