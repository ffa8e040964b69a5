#include "tests/module_windows/ImportedFunction.h"
#include "tests/module_windows/ModuleInMemory.h"

#include "kthost/audit/Trace.h"
#include "tests/support/TempFolder.h"

#include <filesystem>

/// Whose functions the module calls for the system's: the system's, except while the host has to stand
/// between.
namespace {

class ModulesCalls : public ModuleInMemory {
protected:
    std::uintptr_t called(const char* name) {
        return importedFunction(host_.modules().find(kName)->handle(), name);
    }
};

std::uintptr_t ofUser(const char* name) {
    return systemFunction(L"user32.dll", name);
}

std::uintptr_t ofKernel(const char* name) {
    return systemFunction(L"kernel32.dll", name);
}

TEST_F(ModulesCalls, GoToTheSystem) {
    EXPECT_EQ(called("GetTickCount"), ofKernel("GetTickCount"));
    EXPECT_EQ(called("GetModuleHandleW"), ofKernel("GetModuleHandleW"));
    EXPECT_EQ(called("GetInputState"), ofUser("GetInputState"));
    EXPECT_EQ(called("PostMessageW"), ofUser("PostMessageW"));
    EXPECT_EQ(called("RegisterWindowMessageW"), ofUser("RegisterWindowMessageW"));
}

TEST_F(ModulesCalls, AreImportsOfTheModule) {
    for (const char* name :
         {"GetTickCount", "GetModuleHandleW", "GetInputState", "PostMessageW", "RegisterWindowMessageW"}) {
        EXPECT_NE(called(name), 0U) << name;
    }
}

TEST_F(ModulesCalls, GoToTheHostWhileAClockIsSet) {
    host_.clock().set(1000);
    EXPECT_NE(called("GetTickCount"), ofKernel("GetTickCount"));
    host_.clock().useMachine();
    EXPECT_EQ(called("GetTickCount"), ofKernel("GetTickCount"));
}

TEST_F(ModulesCalls, GoToTheHostWhileATestHasInputWaiting) {
    host_.window().setInputWaiting(true);
    EXPECT_NE(called("GetInputState"), ofUser("GetInputState"));
    host_.window().setInputWaiting(false);
    EXPECT_EQ(called("GetInputState"), ofUser("GetInputState"));
}

TEST_F(ModulesCalls, OfOneKindGoToTheHostAlone) {
    host_.clock().set(1000);
    EXPECT_EQ(called("GetInputState"), ofUser("GetInputState"));
    EXPECT_EQ(called("PostMessageW"), ofUser("PostMessageW"));
}

TEST_F(ModulesCalls, OfALibraryThatIsLoadedWhileAClockIsSetGoToTheHost) {
    ASSERT_TRUE(host_.modules().unload(kName));
    host_.clock().set(1000);
    ASSERT_TRUE(host_.modules().load(std::filesystem::path(KTDX_BINARIES) / kName));
    EXPECT_NE(called("GetTickCount"), ofKernel("GetTickCount"));
}

TEST_F(ModulesCalls, GoToTheHostWhileATraceShowsWhatIsPosted) {
    const TempFolder folder;
    ASSERT_TRUE(kthost::openTrace(folder / "trace.jsonl"));
    EXPECT_NE(called("PostMessageW"), ofUser("PostMessageW"));
    kthost::closeTrace();
    EXPECT_EQ(called("PostMessageW"), ofUser("PostMessageW"));
}

TEST(ProgramsCalls, GoToTheSystemAgainWhenTheHostHasGone) {
    {
        kthost::Host host;
        host.clock().set(1000);
        EXPECT_EQ(GetTickCount(), 1000U);
    }
    EXPECT_EQ(importedFunction(GetModuleHandleW(nullptr), "GetTickCount"), ofKernel("GetTickCount"));
}

} // namespace
