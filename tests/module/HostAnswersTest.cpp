#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/SystemRegistry.h"
#include "module/EntryPoint.h"
#include "module/Module.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <KtRxDictionary.h>
#include <KtRxService.h>
#include <KtUtResource.h>

#include <string>
#include <vector>

/// The entry point and a host that answers as a test wants it, where the reference host never would.
namespace {

/// Answers one after the other what it is told to, whatever is asked for.
class AnsweringRegistry : public KtRxDictionary {
public:
    explicit AnsweringRegistry(std::vector<KtRxObject*> answers) : answers_(std::move(answers)) {}

    KtRxObject* at(const wchar_t* /*key*/) const override { return answers_.at(asked_++); }

    bool add(const wchar_t* /*key*/, KtRxObject* /*object*/) override { return false; }

    KtRxObject* remove(const wchar_t* /*key*/) override { return nullptr; }

    std::size_t asked() const { return asked_; }

private:
    std::vector<KtRxObject*> answers_;
    mutable std::size_t asked_ = 0;
};

KtRxDictionary* registryInstead = nullptr;
HMODULE libraryInstead = nullptr;

/// What was asked of the host, and how things stood then.
struct Asked {
    std::wstring library;
    int language = -1;
    int flags = -1;
    bool hadService = false;
    bool hadApplication = false;
    void* applicationId = nullptr;
    int flagsAtFreeing = -1;
};

Asked asked;

} // namespace

// The module's objects find these before the host's.

KtRxDictionary* ktrxSysRegistry() {
    return registryInstead != nullptr ? registryInstead : &kthost::SystemRegistry::current()->root();
}

HMODULE KtUtResource::loadDll(const wchar_t* name, int language, int flags) {
    asked.library = name;
    asked.language = language;
    asked.flags = flags;
    return libraryInstead != nullptr ? libraryInstead : kthost::ModuleLoader::current()->loadResource(name);
}

bool KtUtResource::freeDll(HMODULE library, int flags) {
    asked.flagsAtFreeing = flags;
    const bool done = kthost::ModuleLoader::current()->freeResource(library); // counts it
    return done || (library != nullptr && library == libraryInstead);
}

bool ktrxRegisterAppMDIAware(void* applicationId) {
    asked.applicationId = applicationId;
    asked.hadService = ktrxServiceIsRegistered(L"KtDxNotify");
    asked.hadApplication = gApplication != nullptr;
    return kthost::ModuleLoader::current()->markMdiAware(applicationId);
}

namespace {

class HostAnswers : public ModuleTest {
protected:
    HostAnswers() { EXPECT_TRUE(ktrxRegisterService(L"KtDxNotify")); }

    ~HostAnswers() override { registryInstead = nullptr; }

    /// What unload leaves of the service when the registry answers so.
    bool isLeftAfter(const std::vector<KtRxObject*>& answers) {
        AnsweringRegistry registry(answers);
        registryInstead = &registry;
        EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
        registryInstead = nullptr;
        EXPECT_EQ(registry.asked(), answers.size());
        return ktrxServiceIsRegistered(L"KtDxNotify");
    }

    KtRxObject* services() { return host_.registry().services(); }

    KtRxService noDictionary_;
};

TEST_F(HostAnswers, TheServiceIsRemovedWhenTheDictionaryIsFoundTwice) {
    EXPECT_FALSE(isLeftAfter({services(), services()}));
}

TEST_F(HostAnswers, TheServiceStaysWhenThereIsNoDictionary) {
    EXPECT_TRUE(isLeftAfter({nullptr}));
}

TEST_F(HostAnswers, TheServiceStaysWhenTheDictionaryIsNone) {
    EXPECT_TRUE(isLeftAfter({&noDictionary_}));
}

TEST_F(HostAnswers, TheServiceStaysWhenTheDictionaryIsNotFoundAgain) {
    EXPECT_TRUE(isLeftAfter({services(), nullptr}));
}

TEST_F(HostAnswers, TheServiceStaysWhenTheDictionaryIsNoneTheSecondTime) {
    EXPECT_TRUE(isLeftAfter({services(), &noDictionary_}));
}

TEST_F(HostAnswers, NothingIsDeletedThatTheDictionaryDidNotHaveAnyMore) {
    kthost::Dictionary empty;
    EXPECT_TRUE(isLeftAfter({services(), &empty}));
}

/// Initialising with a resource library that the host has found.
class Initialising : public ModuleTest {
protected:
    Initialising() {
        libraryInstead = reinterpret_cast<HMODULE>(&library_);
        asked = {};
    }

    ~Initialising() override {
        libraryInstead = nullptr;
        gResourceInstance = nullptr;
    }

    char library_ = 0;
};

TEST_F(Initialising, MakesTheApplicationAndKeepsTheLibrary) {
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 0);
    EXPECT_TRUE(hears(gApplication));
    EXPECT_EQ(gResourceInstance, libraryInstead);
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
}

TEST_F(Initialising, LoadsTheLibraryInTheHostsOwnLanguageAndWay) {
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 0);
    EXPECT_EQ(asked.library, L"KtDxNotifyRes.dll");
    EXPECT_EQ(asked.language, 0);
    EXPECT_EQ(asked.flags, 0);
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
}

TEST_F(Initialising, DeclaresSeveralDocumentsBehindTheServiceAndBeforeTheApplication) {
    EXPECT_EQ(ktrxEntryPoint(1, &library_), 0);
    EXPECT_EQ(asked.applicationId, &library_);
    EXPECT_TRUE(asked.hadService);
    EXPECT_FALSE(asked.hadApplication);
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
}

TEST_F(Initialising, IsForgottenWhenTheLibraryIsFreed) {
    ASSERT_EQ(ktrxEntryPoint(1, nullptr), 0);
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_EQ(asked.flagsAtFreeing, 0);
    EXPECT_EQ(gResourceInstance, nullptr);
}

TEST_F(Initialising, IsRefusedForAServiceThatIsRegisteredAndUndoesNothing) {
    ASSERT_TRUE(ktrxRegisterService(L"KtDxNotify"));
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 3);
    EXPECT_EQ(gApplication, nullptr);
    EXPECT_EQ(gResourceInstance, libraryInstead);
    EXPECT_EQ(faults().calls(kthost::HostCall::freeResource), 0U);
}

TEST_F(Initialising, RegistersTheServiceAndMakesNoSecondApplication) {
    const KtDxApplication application;
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 0);
    EXPECT_TRUE(ktrxServiceIsRegistered(L"KtDxNotify"));
    EXPECT_EQ(gApplication, &application);
}

TEST_F(Initialising, SaysNothingWhenThereIsNoMemoryForTheApplication) {
    {
        const FailingAllocation none(1, sizeof(KtDxApplication));
        EXPECT_EQ(ktrxEntryPoint(1, nullptr), 0);
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_EQ(gApplication, nullptr);
    EXPECT_TRUE(ktrxServiceIsRegistered(L"KtDxNotify"));
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_FALSE(ktrxServiceIsRegistered(L"KtDxNotify"));
}

} // namespace
