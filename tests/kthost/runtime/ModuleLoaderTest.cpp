#include "kthost/runtime/ModuleLoader.h"

#include "kthost/runtime/ModuleCode.h"
#include "tests/kthost/modules/TestModules.h"
#include "tests/support/TempFolder.h"

#include <KtRxModule.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ModuleLoading : public testing::Test {
protected:
    std::vector<std::uint32_t> messagesOfGoodModule() const {
        auto* count = exportedFunction<std::size_t()>(modules, "GoodModule.kmx", "goodMessageCount");
        auto* at = exportedFunction<std::uint32_t(std::size_t)>(modules, "GoodModule.kmx", "goodMessageAt");
        std::vector<std::uint32_t> messages;
        for (std::size_t i = 0; i < count(); ++i) {
            messages.push_back(at(i));
        }
        return messages;
    }

    ModuleLoader modules;
};

TEST_F(ModuleLoading, SendsInitialiseOnceTheModuleIsInMemory) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_THAT(messagesOfGoodModule(), ElementsAre(KtRx::kInitialise));
}

TEST_F(ModuleLoading, GivesTheModuleItsApplicationId) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    auto* id = exportedFunction<void*()>(modules, "GoodModule.kmx", "goodApplicationId");
    EXPECT_EQ(id(), modules.find("GoodModule.kmx"));
}

TEST_F(ModuleLoading, NotesThatAModuleDeclaredItselfMdiAware) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_TRUE(modules.find("GoodModule.kmx")->isMdiAware());
}

TEST_F(ModuleLoading, LeavesAModuleThatDeclaredNothingUnaware) {
    ASSERT_TRUE(modules.load(testModule("PlainModule.kmx")));
    EXPECT_FALSE(modules.find("PlainModule.kmx")->isMdiAware());
}

TEST_F(ModuleLoading, RefusesMdiAwarenessForAnIdOfNoModule) {
    int somethingElse = 0;
    EXPECT_FALSE(ktrxRegisterAppMDIAware(&somethingElse));
}

TEST_F(ModuleLoading, RefusesAFileThatIsNotThere) {
    const HostResult result = modules.load(testModule("Nowhere.kmx"));
    EXPECT_EQ(result.status, Orbx::eFileAccess);
    EXPECT_THAT(result.reason, HasSubstr("Nowhere.kmx: no such module file"));
}

TEST_F(ModuleLoading, RefusesAFileThatIsNoLibrary) {
    const TempFolder folder;
    const HostResult result = modules.load(folder.file("Garbage.kmx", "this is not a library"));
    EXPECT_EQ(result.status, Orbx::eFileAccess);
    EXPECT_THAT(result.reason, HasSubstr("Garbage.kmx cannot be loaded: "));
}

TEST_F(ModuleLoading, RefusesALibraryWithoutEntryPoint) {
    EXPECT_THAT(modules.load(testModule("NoEntryPoint.kmx")).reason,
                HasSubstr("NoEntryPoint.kmx is no module of this host: it has no ktrxEntryPoint"));
}

TEST_F(ModuleLoading, RefusesALibraryWithoutVersionQuery) {
    EXPECT_THAT(modules.load(testModule("NoApiVersion.kmx")).reason,
                HasSubstr("it has no ktrxGetApiVersion"));
}

TEST_F(ModuleLoading, RefusesAnOlderMajorInterfaceVersion) {
    EXPECT_EQ(modules.load(testModule("OlderMajor.kmx")).reason,
              "OlderMajor.kmx was built for host interface 23.5, this host has 24.0");
}

TEST_F(ModuleLoading, RefusesANewerMajorInterfaceVersion) {
    EXPECT_EQ(modules.load(testModule("NewerMajor.kmx")).reason,
              "NewerMajor.kmx was built for host interface 25.0, this host has 24.0");
}

TEST_F(ModuleLoading, RefusesANewerMinorInterfaceVersion) {
    EXPECT_EQ(modules.load(testModule("NewerMinor.kmx")).reason,
              "NewerMinor.kmx was built for host interface 24.1, this host has 24.0");
}

TEST_F(ModuleLoading, ReportsAFailedInitialiseWithTheModulesName) {
    EXPECT_EQ(modules.load(testModule("FailingInitialise.kmx")).reason,
              "FailingInitialise.kmx failed to initialise: it answered 3");
}

TEST_F(ModuleLoading, ForgetsAModuleThatFailedToInitialise) {
    EXPECT_FALSE(modules.load(testModule("FailingInitialise.kmx")));
    EXPECT_TRUE(modules.modules().empty());
}

TEST_F(ModuleLoading, SaysWhatAnEntryPointThrew) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(modules.load(testModule("ThrowingModule.kmx")));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("the entry point of ThrowingModule.kmx threw: the disk is full"));
}

TEST_F(ModuleLoading, RefusesTheSameFileTwice) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const HostResult second = modules.load(testModule("GoodModule.kmx"));
    EXPECT_EQ(second.status, Orbx::eDuplicateKey);
    EXPECT_EQ(second.reason, "GoodModule.kmx is loaded already");
}

TEST_F(ModuleLoading, RefusesTheSameFileUnderAnotherPath) {
    const TempFolder folder;
    const std::filesystem::path file =
        folder.file("GoodModule.kmx", contentsOf(testModule("GoodModule.kmx")));
    std::filesystem::create_hard_link(file, folder / "GoodLink.kmx");
    ASSERT_TRUE(modules.load(file));
    EXPECT_EQ(modules.load(folder / "GoodLink.kmx").status, Orbx::eDuplicateKey);
    EXPECT_TRUE(modules.unload("GoodModule.kmx")); // a file that is loaded cannot be removed everywhere
}

TEST_F(ModuleLoading, LoadsAgainAfterUnloading) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    ASSERT_TRUE(modules.unload("GoodModule.kmx"));
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_THAT(messagesOfGoodModule(), ElementsAre(KtRx::kInitialise));
}

TEST_F(ModuleLoading, SendsUnloadBeforeTheModuleLeavesMemory) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    std::vector<std::uint32_t> seen;
    modules.onLeaving = [&](const LoadedModule&) { seen = messagesOfGoodModule(); };
    ASSERT_TRUE(modules.unload("GoodModule.kmx"));
    EXPECT_THAT(seen, ElementsAre(KtRx::kInitialise, KtRx::kUnload));
}

TEST_F(ModuleLoading, RefusesToUnloadWhatIsNotLoaded) {
    EXPECT_EQ(modules.unload("GoodModule.kmx").status, Orbx::eKeyNotFound);
}

TEST_F(ModuleLoading, UnloadsTheYoungestFirst) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    ASSERT_TRUE(modules.load(testModule("PlainModule.kmx")));
    std::vector<std::string> left;
    modules.onLeaving = [&left](const LoadedModule& module) { left.push_back(module.name()); };
    ASSERT_TRUE(modules.unloadAll());
    EXPECT_THAT(left, ElementsAre("PlainModule.kmx", "GoodModule.kmx"));
}

TEST_F(ModuleLoading, RefusesToUnloadWhileModuleCodeRuns) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const ModuleCodeScope running(ModuleCodeKind::callback, "PartsList.kmx");
    const HostResult result = modules.unload("GoodModule.kmx");
    EXPECT_EQ(result.status, Orbx::eNotNow);
    EXPECT_EQ(result.reason,
              "GoodModule.kmx cannot be unloaded while a callback of PartsList.kmx is running");
}

TEST_F(ModuleLoading, KeepsAModuleThatItRefusedToUnload) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const ModuleCodeScope running(ModuleCodeKind::filter, "");
    EXPECT_FALSE(modules.unload("GoodModule.kmx"));
    EXPECT_THAT(messagesOfGoodModule(), ElementsAre(KtRx::kInitialise));
}

TEST_F(ModuleLoading, PassesOtherCodesOnAndGivesTheAnswer) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_EQ(modules.send(*modules.find("GoodModule.kmx"), 1000), 42);
}

TEST_F(ModuleLoading, SendsACodeToEveryModule) {
    ASSERT_TRUE(modules.load(testModule("PlainModule.kmx")));
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    modules.sendToAll(KtRx::kDrawingOpened);
    EXPECT_THAT(messagesOfGoodModule(), ElementsAre(KtRx::kInitialise, KtRx::kDrawingOpened));
}

TEST_F(ModuleLoading, FindsTheModuleThatAFunctionLiesIn) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const LoadedModule* module = modules.find("GoodModule.kmx");
    EXPECT_EQ(modules.moduleAt(module->exportOf("goodMessageCount")), module);
}

TEST_F(ModuleLoading, FindsNoModuleForTheHostsOwnCode) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_EQ(modules.moduleAt(&modules), nullptr);
}

TEST_F(ModuleLoading, RemembersWhereAnUnloadedModuleLay) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const void* address = modules.exportOf("GoodModule.kmx", "goodMessageCount");
    ASSERT_TRUE(modules.unload("GoodModule.kmx"));
    ASSERT_NE(modules.unloadedModuleAt(address), nullptr);
    EXPECT_EQ(*modules.unloadedModuleAt(address), "GoodModule.kmx");
}

TEST_F(ModuleLoading, KnowsNoUnloadedModuleWhereAnotherTookItsPlace) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    ASSERT_TRUE(modules.unload("GoodModule.kmx"));
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_EQ(modules.unloadedModuleAt(modules.exportOf("GoodModule.kmx", "goodMessageCount")), nullptr);
}

TEST_F(ModuleLoading, HasNoRunningModuleOutsideEntryPoints) {
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    EXPECT_EQ(modules.running(), nullptr);
}

} // namespace
} // namespace kthost
