#include <KtUtResource.h>

#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleLoader.h"
#include "tests/kthost/modules/TestModules.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace kthost {
namespace {

class ResourceLibrary : public testing::Test {
protected:
    void TearDown() override { Faults::instance().reset(); }

    void loadModule() { ASSERT_TRUE(modules.load(testModule("ResourceModule.kmx"))); }

    HMODULE loaded() const {
        return exportedFunction<HMODULE()>(modules, "ResourceModule.kmx", "resourceModuleLoaded")();
    }

    HMODULE loadByName(const wchar_t* name) {
        exportedFunction<void(const wchar_t*)>(modules, "ResourceModule.kmx", "resourceModuleSetName")(name);
        modules.send(*modules.find("ResourceModule.kmx"), 2000);
        return loaded();
    }

    ModuleLoader modules;
};

TEST_F(ResourceLibrary, IsLoadedFromTheFolderOfTheModuleWhoseEntryPointRuns) {
    loadModule();
    EXPECT_NE(loaded(), nullptr);
}

TEST_F(ResourceLibrary, IsNotLoadedWhenNoEntryPointRuns) {
    loadModule();
    EXPECT_EQ(KtUtResource::loadDll(L"TestResource.dll", 0, 0), nullptr);
}

TEST_F(ResourceLibrary, IsNotLookedForInTheCurrentFolder) {
    const TempFolder elsewhere;
    std::filesystem::copy_file(testModule("ResourceModule.kmx"), elsewhere / "ResourceModule.kmx");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(KTHOST_TEST_MODULES);
    const HostResult result = modules.load(elsewhere / "ResourceModule.kmx");
    std::filesystem::current_path(before);
    ASSERT_TRUE(result) << result.reason;
    EXPECT_EQ(loaded(), nullptr);
    EXPECT_TRUE(modules.unload("ResourceModule.kmx")); // a file that is loaded cannot be removed everywhere
}

TEST_F(ResourceLibrary, IsRefusedByAPath) {
    loadModule();
    EXPECT_EQ(loadByName(L"../test_modules/TestResource.dll"), nullptr);
}

TEST_F(ResourceLibrary, IsNullForNoName) {
    loadModule();
    EXPECT_EQ(loadByName(nullptr), nullptr);
}

TEST_F(ResourceLibrary, IsNullWhenThereIsNoSuchFile) {
    loadModule();
    EXPECT_EQ(loadByName(L"Other.dll"), nullptr);
}

TEST_F(ResourceLibrary, IsNullWhenAFaultIsAskedFor) {
    Faults::instance().fail(HostCall::loadResource, 1, Orbx::eFileAccess);
    loadModule();
    EXPECT_EQ(loaded(), nullptr);
}

TEST_F(ResourceLibrary, IsFreedOnce) {
    loadModule();
    EXPECT_TRUE(KtUtResource::freeDll(loaded(), 0));
    EXPECT_FALSE(KtUtResource::freeDll(loaded(), 0));
}

TEST_F(ResourceLibrary, IsFreedAsOftenAsItWasLoaded) {
    loadModule();
    ASSERT_EQ(loadByName(L"TestResource.dll"), loaded());
    EXPECT_TRUE(KtUtResource::freeDll(loaded(), 0));
    EXPECT_TRUE(KtUtResource::freeDll(loaded(), 0));
}

TEST_F(ResourceLibrary, IsNotFreedWhenAFaultIsAskedFor) {
    loadModule();
    Faults::instance().fail(HostCall::freeResource, 1, Orbx::eFileAccess);
    EXPECT_FALSE(KtUtResource::freeDll(loaded(), 0));
    EXPECT_TRUE(KtUtResource::freeDll(loaded(), 0));
}

TEST_F(ResourceLibrary, IsNotFreedByANullHandle) {
    EXPECT_FALSE(KtUtResource::freeDll(nullptr, 0));
}

} // namespace
} // namespace kthost
