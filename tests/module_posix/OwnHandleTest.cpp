#include "module/EntryPoint.h"

#include <WindowSystem.h>

#include "tests/support/ModuleTest.h"

#include <cstdint>
#include <string>

/// The module's question for its own handle, of which nothing comes. Where the system itself answers it,
/// nobody can listen.
namespace {

using kthost::HostCall;

std::wstring nameAsked;
std::uint64_t librariesBefore = 0;

} // namespace

// The module's objects find this before the host's.
HMODULE GetModuleHandleW(const wchar_t* name) {
    nameAsked = name;
    librariesBefore = kthost::Faults::instance().calls(HostCall::loadResource);
    return nullptr;
}

namespace {

using OwnHandle = ModuleTest;

TEST_F(OwnHandle, IsAskedForBeforeTheResourceLibrary) {
    librariesBefore = 99;
    faults().reset();
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 3);
    EXPECT_EQ(nameAsked, L"KtDxNotify.kmx");
    EXPECT_EQ(librariesBefore, 0U);
    EXPECT_EQ(faults().calls(HostCall::loadResource), 1U);
}

} // namespace
