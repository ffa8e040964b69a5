#include "module/EntryPoint.h"

#include <KtRxDictionary.h>
#include <KtRxModule.h>
#include <KtRxService.h>

#include "module/Module.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace {

using kthost::HostCall;
using testing::IsEmpty;
using testing::SizeIs;

/// The entry point called from outside a module: the host then knows no folder to load a resource library
/// from.
class EntryPoint : public ModuleTest {};

TEST_F(EntryPoint, WasBuiltForHostInterface24WhateverTheHosts) {
    EXPECT_EQ(ktrxGetApiVersion(0), 0x180000U);
    EXPECT_EQ(ktrxGetApiVersion(0x190001), 0x180000U);
}

TEST_F(EntryPoint, SaysThatTheResourceLibraryCannotBeLoaded) {
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 3);
    ASSERT_THAT(host_.window().messageBoxes(), SizeIs(1));
    const auto& box = host_.window().messageBoxes().front();
    EXPECT_EQ(box.text, L"Unable to load resource DLL: KtDxNotifyRes.dll");
    EXPECT_EQ(box.type, 0x10U);
    EXPECT_EQ(box.helpId, 0U);
}

TEST_F(EntryPoint, DoesNothingElseWithoutTheResourceLibrary) {
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 3);
    EXPECT_EQ(gResourceInstance, nullptr);
    EXPECT_EQ(gApplication, nullptr);
    EXPECT_FALSE(ktrxServiceIsRegistered(L"KtDxNotify"));
}

TEST_F(EntryPoint, LooksForTheResourceLibraryBeforeTheService) {
    ASSERT_TRUE(ktrxRegisterService(L"KtDxNotify"));
    EXPECT_EQ(ktrxEntryPoint(1, nullptr), 3);
    EXPECT_THAT(host_.window().messageBoxes(), SizeIs(1));
}

TEST_F(EntryPoint, IgnoresEveryOtherMessage) {
    const KtDxApplication application;
    for (const std::uint32_t message : {0U, 3U, 4U, 5U, 6U, 0x80000001U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ktrxEntryPoint(message, nullptr), 0) << message;
    }
    EXPECT_EQ(gApplication, &application);
    EXPECT_EQ(faults().calls(HostCall::loadResource), 0U);
    EXPECT_EQ(faults().calls(HostCall::freeResource), 0U);
}

TEST_F(EntryPoint, UnloadsWithoutAnInitialise) {
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_EQ(gApplication, nullptr);
    EXPECT_EQ(gResourceInstance, nullptr);
    EXPECT_THAT(host_.window().messageBoxes(), IsEmpty());
}

TEST_F(EntryPoint, UnloadDestroysTheApplication) {
    const kthost::Document& document = open(L"plan");
    auto* application = new KtDxApplication;
    ASSERT_NE(documentRecord(host_.documents().currentDocument(), false), nullptr) << document.name();
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_EQ(gApplication, nullptr);
    EXPECT_FALSE(hears(application));
}

TEST_F(EntryPoint, UnloadRemovesTheService) {
    ASSERT_TRUE(ktrxRegisterService(L"KtDxNotify"));
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_FALSE(ktrxServiceIsRegistered(L"KtDxNotify"));
}

TEST_F(EntryPoint, UnloadLeavesOtherServicesAlone) {
    ASSERT_TRUE(ktrxRegisterService(L"KtDxNotify"));
    ASSERT_TRUE(ktrxRegisterService(L"Other"));
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_TRUE(ktrxServiceIsRegistered(L"Other"));
}

TEST_F(EntryPoint, UnloadIsDoneWithoutAServiceDictionary) {
    delete ktrxSysRegistry()->remove(L"ServiceDictionary");
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
}

TEST_F(EntryPoint, UnloadIsDoneWithAServiceDictionaryThatIsNone) {
    delete ktrxSysRegistry()->remove(L"ServiceDictionary");
    ASSERT_TRUE(ktrxSysRegistry()->add(L"ServiceDictionary", new KtRxService));
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_NE(ktrxSysRegistry()->at(L"ServiceDictionary"), nullptr);
}

TEST_F(EntryPoint, UnloadKeepsAResourceLibraryThatCannotBeFreed) {
    int notALibrary = 0;
    const auto handle = reinterpret_cast<HMODULE>(&notALibrary);
    gResourceInstance = handle;
    EXPECT_EQ(ktrxEntryPoint(2, nullptr), 0);
    EXPECT_EQ(gResourceInstance, handle);
    gResourceInstance = nullptr;
}

/// What lies in the dictionary under the service's name, and what it saw when it went.
template <typename Base>
class WatchedEntry : public Base {
public:
    explicit WatchedEntry(bool* applicationGone, std::uint64_t* librariesFreed, int* destroyed)
        : applicationGone_(applicationGone),
          librariesFreed_(librariesFreed),
          destroyed_(destroyed) {}

    WatchedEntry(const WatchedEntry&) = delete;
    WatchedEntry& operator=(const WatchedEntry&) = delete;

    ~WatchedEntry() override {
        *applicationGone_ = gApplication == nullptr;
        *librariesFreed_ = kthost::Faults::instance().calls(HostCall::freeResource);
        ++*destroyed_;
    }

private:
    bool* applicationGone_;
    std::uint64_t* librariesFreed_;
    int* destroyed_;
};

class PlainObject : public KtRxObject {
public:
    PlainObject() = default;
};

class EntryPointUnload : public ModuleTest {
protected:
    template <typename Base>
    WatchedEntry<Base>* addEntry() {
        auto* entry = new WatchedEntry<Base>(&applicationGone_, &librariesFreed_, &destroyed_);
        auto* services = static_cast<KtRxDictionary*>(ktrxSysRegistry()->at(L"ServiceDictionary"));
        EXPECT_TRUE(services->add(L"KtDxNotify", entry));
        return entry;
    }

    bool applicationGone_ = false;
    std::uint64_t librariesFreed_ = 99;
    int destroyed_ = 0;
};

TEST_F(EntryPointUnload, DestroysTheApplicationBeforeItRemovesTheService) {
    new KtDxApplication; // enters itself, and is the module's to destroy
    addEntry<KtRxService>();
    ktrxEntryPoint(2, nullptr);
    EXPECT_EQ(destroyed_, 1);
    EXPECT_TRUE(applicationGone_);
}

TEST_F(EntryPointUnload, RemovesTheServiceBeforeItFreesTheResourceLibrary) {
    addEntry<KtRxService>();
    ktrxEntryPoint(2, nullptr);
    EXPECT_EQ(librariesFreed_, 0U);
    EXPECT_EQ(faults().calls(HostCall::freeResource), 1U);
}

TEST_F(EntryPointUnload, RemovesButDoesNotDeleteWhatIsNoService) {
    KtRxObject* entry = addEntry<PlainObject>();
    ktrxEntryPoint(2, nullptr);
    EXPECT_FALSE(ktrxServiceIsRegistered(L"KtDxNotify"));
    EXPECT_EQ(destroyed_, 0);
    delete entry;
}

} // namespace
