#include "tests/module_windows/ProgramFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

/// The files as the system's loader and a package's receiver meet them.
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

ProgramFile built(const std::string& name) {
    return ProgramFile(std::filesystem::path(KTDX_BINARIES) / name);
}

/// All libraries and programs of the build, those of the tests too.
std::vector<std::filesystem::path> allBuilt() {
    const std::set<std::string> kinds{".kmx", ".dll", ".exe"};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(KTDX_BINARIES)) {
        if (kinds.contains(entry.path().extension().string())) {
            files.push_back(entry.path());
        }
    }
    return files;
}

TEST(ModuleFile, ExportsItsNineFunctionsUnderPlainNames) {
    EXPECT_THAT(built("KtDxNotify.kmx").exports().names,
                ElementsAre("ktdxBlockReferenceMonitorAttach", "ktdxBlockReferenceMonitorDetach",
                            "ktdxDocTimerAttach", "ktdxGetBlockRecordIdsOfKtDbTables", "ktdxGetKtDbTableIds",
                            "ktdxReadLegacyBlkTemplate", "ktdxUpdateBlockGraph", "ktrxEntryPoint",
                            "ktrxGetApiVersion"));
}

TEST(ModuleFile, ExportsNothingThatHasANumberOnly) {
    EXPECT_EQ(built("KtDxNotify.kmx").exports().functions, 9U);
}

TEST(ModuleFile, CanBeMoved) {
    EXPECT_TRUE(built("KtDxNotify.kmx").canBeMoved());
}

TEST(ModuleFile, NeedsTheSystemAndTheHostOnly) {
    EXPECT_THAT(built("KtDxNotify.kmx").importedFiles(),
                testing::UnorderedElementsAre("kernel32.dll", "user32.dll", "msvcrt.dll", "kthostcore.dll"));
}

TEST(BuiltFiles, NeedTheSystemTheHostAndTheModuleOnly) {
    const std::set<std::string> allowed{"kernel32.dll",   "user32.dll",     "shell32.dll",
                                        "advapi32.dll",   "version.dll",    "msvcrt.dll",
                                        "kthostcore.dll", "ktdxnotify.kmx", "ole32.dll"};
    const auto files = allBuilt();
    ASSERT_GE(files.size(), 6U);
    for (const auto& file : files) {
        for (const std::string& needed : ProgramFile(file).importedFiles()) {
            EXPECT_TRUE(allowed.contains(needed)) << file.string() << " needs " << needed;
        }
    }
}

TEST(BuiltFiles, NeedNoRunTimeLibraryOfTheCompilers) {
    for (const auto& file : allBuilt()) {
        for (const char* library : {"libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"}) {
            EXPECT_THAT(ProgramFile(file).importedFiles(), Not(Contains(library))) << file.string();
        }
    }
}

TEST(ResourceLibraryFile, HasNoCode) {
    EXPECT_THAT(built("KtDxNotifyRes.dll").codeSections(), IsEmpty());
}

TEST(ResourceLibraryFile, HasNoEntryPoint) {
    EXPECT_EQ(built("KtDxNotifyRes.dll").entryPoint(), 0U);
}

TEST(ResourceLibraryFile, NeedsAndOffersNothing) {
    EXPECT_THAT(built("KtDxNotifyRes.dll").importedFiles(), IsEmpty());
    EXPECT_EQ(built("KtDxNotifyRes.dll").exports().functions, 0U);
}

TEST(ResourceLibraryFile, CanBeMoved) {
    EXPECT_TRUE(built("KtDxNotifyRes.dll").canBeMoved());
}

TEST(ProgramFile, FindsTheCodeOfALibraryThatHasSome) {
    EXPECT_THAT(built("KtDxNotify.kmx").codeSections(), Not(IsEmpty()));
    EXPECT_NE(built("KtDxNotify.kmx").entryPoint(), 0U);
}

TEST(ProgramFile, IsNoOtherFile) {
    EXPECT_THROW(ProgramFile(std::filesystem::path(KTDX_SAMPLES) / "demo.script"), std::runtime_error);
}

} // namespace
