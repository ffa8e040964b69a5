#include "tests/module_windows/VersionResource.h"

#include "kthost/documents/Host.h"
#include "tests/kthost/modules/TestModules.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace {

VersionResource resourceOf(const std::string& name) {
    return VersionResource(std::filesystem::path(KTDX_BINARIES) / name);
}

class Versions : public testing::TestWithParam<const char*> {};

TEST_P(Versions, HaveTheFilesNameInThem) {
    EXPECT_EQ(resourceOf(GetParam()).text(L"OriginalFilename"), std::filesystem::path(GetParam()).wstring());
}

TEST_P(Versions, HaveTheProductsNameInThem) {
    EXPECT_EQ(resourceOf(GetParam()).text(L"ProductName"), L"KtDxNotify");
}

TEST_P(Versions, HaveTheVersionInThemAsText) {
    EXPECT_EQ(resourceOf(GetParam()).text(L"FileVersion"), KTDX_VERSION);
    EXPECT_EQ(resourceOf(GetParam()).text(L"ProductVersion"), KTDX_VERSION);
}

TEST_P(Versions, HaveTheVersionInThemAsNumbers) {
    EXPECT_EQ(resourceOf(GetParam()).fileVersion(), KTDX_VERSION L".0");
}

TEST_P(Versions, SayWhatTheFileIs) {
    EXPECT_FALSE(resourceOf(GetParam()).text(L"FileDescription").empty());
    EXPECT_EQ(resourceOf(GetParam()).fileType(), DWORD{VFT_DLL});
}

INSTANTIATE_TEST_SUITE_P(Resources, Versions,
                         testing::Values("KtDxNotify.kmx", "KtDxNotifyRes.dll", "kthostcore.dll"),
                         [](const auto& file) { return std::filesystem::path(file.param).stem().string(); });

TEST(ModulesVersion, HasTheHostInterfaceInItThatTheModuleAnswersWith) {
    kthost::Host host;
    ASSERT_TRUE(host.modules().load(std::filesystem::path(KTDX_BINARIES) / "KtDxNotify.kmx"));
    using Query = std::uint32_t (*)(std::uint32_t);
    const auto query =
        reinterpret_cast<Query>(host.modules().exportOf("KtDxNotify.kmx", "ktrxGetApiVersion"));
    const std::uint32_t version = query(0);
    EXPECT_EQ(resourceOf("KtDxNotify.kmx").text(L"HostInterfaceVersion"),
              std::to_wstring(version >> 16) + L"." + std::to_wstring(version & 0xFFFF));
}

TEST(ResourceLibrarysVersion, HasTheSameHostInterfaceInItAsTheModules) {
    EXPECT_EQ(resourceOf("KtDxNotifyRes.dll").text(L"HostInterfaceVersion"), L"24.0");
    EXPECT_EQ(resourceOf("KtDxNotify.kmx").text(L"HostInterfaceVersion"), L"24.0");
}

TEST(VersionResource, IsNotThereInAFileWithoutOne) {
    ASSERT_TRUE(std::filesystem::exists(testModule("PlainModule.kmx")));
    EXPECT_FALSE(VersionResource(testModule("PlainModule.kmx")).isThere());
}

} // namespace
