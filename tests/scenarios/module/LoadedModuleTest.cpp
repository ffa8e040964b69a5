// The module as the host loads it: what initialise and unload do, in which order, and what becomes of
// failures.

#include <KtRxCallback.h>
#include <KtRxDictionary.h>
#include <KtRxModule.h>
#include <KtRxService.h>

#include "kthost/audit/Trace.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Faults.h"
#include "tests/support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace kthost {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kModule = "KtDxNotify.kmx";
constexpr const char* kResources = "KtDxNotifyRes.dll";
constexpr const wchar_t* kService = L"KtDxNotify";

int callbackCalls = 0;

void callback() {
    ++callbackCalls;
}

class LoadedKtDxNotify : public testing::Test {
protected:
    LoadedKtDxNotify() { callbackCalls = 0; }

    static std::filesystem::path binaries() { return KTDX_BINARIES; }

    HostResult load() { return host_.modules().load(binaries() / kModule); }

    LoadedModule& module() { return *host_.modules().find(kModule); }

    /// Sends the module another initialise.
    std::int32_t initialise() { return host_.modules().send(module(), KtRx::kInitialise); }

    std::int32_t unloadMessage() { return host_.modules().send(module(), KtRx::kUnload); }

    Dictionary& services() { return *host_.registry().services(); }

    std::size_t reactorCount() {
        std::size_t count = 0;
        host_.documents().reactors().inspect([&count](const auto*, const auto&) { ++count; });
        return count;
    }

    static std::uint64_t calls(HostCall call) { return Faults::instance().calls(call); }

    Document& open(const std::wstring& name) {
        return host_.documents().create(name, std::make_unique<Database>(name));
    }

    std::int32_t attach(Document& document) {
        using Attach = std::int32_t (*)(KtApDocument*, KtRxCallback, std::uint32_t, std::int32_t);
        const auto attach = reinterpret_cast<Attach>(host_.modules().exportOf(kModule, "ktdxDocTimerAttach"));
        return attach(&document, &callback, 0, 1);
    }

    void runCommand(Document& document) {
        EXPECT_TRUE(host_.documents().runCommand(document, L"nothing",
                                                 [](Document&) { return CommandResult::done; }));
        host_.loop().pump();
    }

    Host host_;
};

TEST_F(LoadedKtDxNotify, RegistersItsServiceAndHearsTheDocumentManager) {
    ASSERT_TRUE(load());
    EXPECT_TRUE(ktrxServiceIsRegistered(kService));
    EXPECT_EQ(reactorCount(), 1U);
    EXPECT_EQ(calls(HostCall::loadResource), 1U);
    EXPECT_THAT(host_.window().messageBoxes(), IsEmpty());
}

TEST_F(LoadedKtDxNotify, DeclaresThatItWorksWithSeveralDocuments) {
    ASSERT_TRUE(load());
    EXPECT_TRUE(module().isMdiAware());
}

TEST_F(LoadedKtDxNotify, RefusesASecondInitialiseAndMakesNoSecondApplication) {
    ASSERT_TRUE(load());
    EXPECT_EQ(initialise(), 3);
    EXPECT_EQ(reactorCount(), 1U);
    EXPECT_TRUE(ktrxServiceIsRegistered(kService));
}

TEST_F(LoadedKtDxNotify, KeepsTheResourceLibraryLoadedWhenTheServiceIsThereAlready) {
    ASSERT_TRUE(load());
    EXPECT_EQ(initialise(), 3);
    EXPECT_EQ(calls(HostCall::loadResource), 2U);
    EXPECT_EQ(calls(HostCall::freeResource), 0U);
}

TEST_F(LoadedKtDxNotify, IsRefusedWhenItsServiceIsRegisteredAlready) {
    ASSERT_TRUE(ktrxRegisterService(kService));
    const HostResult result = load();
    EXPECT_FALSE(result);
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_THAT(host_.window().messageBoxes(), IsEmpty());
}

TEST_F(LoadedKtDxNotify, RegistersAMissingServiceAgainWithoutASecondApplication) {
    ASSERT_TRUE(load());
    Document& document = open(L"plan");
    ASSERT_EQ(attach(document), 1);
    delete services().remove(kService);
    EXPECT_EQ(initialise(), 0);
    EXPECT_TRUE(ktrxServiceIsRegistered(kService));
    EXPECT_EQ(reactorCount(), 1U);
    runCommand(document); // the records of the first application are still there
    EXPECT_EQ(callbackCalls, 1);
}

TEST_F(LoadedKtDxNotify, SaysThatItsResourceLibraryIsMissingAndIsRefused) {
    Faults::instance().fail(HostCall::loadResource, 1, Orbx::eFileAccess);
    EXPECT_FALSE(load());
    ASSERT_THAT(host_.window().messageBoxes(), SizeIs(1));
    EXPECT_EQ(host_.window().messageBoxes().front().text, L"Unable to load resource DLL: KtDxNotifyRes.dll");
    EXPECT_EQ(host_.window().messageBoxes().front().type, 0x10U);
    EXPECT_FALSE(ktrxServiceIsRegistered(kService));
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LoadedKtDxNotify, IgnoresTheOtherMessagesOfTheHost) {
    ASSERT_TRUE(load());
    for (const std::uint32_t message : {0U, 3U, 4U, 5U, 77U}) {
        EXPECT_EQ(host_.modules().send(module(), message), 0) << message;
    }
    EXPECT_TRUE(ktrxServiceIsRegistered(kService));
    EXPECT_EQ(reactorCount(), 1U);
    EXPECT_EQ(calls(HostCall::freeResource), 0U);
}

TEST_F(LoadedKtDxNotify, LetsGoOfEverythingWhenItIsUnloaded) {
    ASSERT_TRUE(load());
    ASSERT_EQ(attach(open(L"plan")), 1);
    ASSERT_TRUE(host_.modules().unload(kModule));
    EXPECT_FALSE(ktrxServiceIsRegistered(kService));
    EXPECT_EQ(reactorCount(), 0U);
    EXPECT_EQ(calls(HostCall::freeResource), 1U);
    EXPECT_THAT(host_.report().findings, IsEmpty());
}

TEST_F(LoadedKtDxNotify, AnswersASecondUnloadWithZero) {
    ASSERT_TRUE(load());
    EXPECT_EQ(unloadMessage(), 0);
    EXPECT_EQ(unloadMessage(), 0);
    EXPECT_FALSE(ktrxServiceIsRegistered(kService));
}

TEST_F(LoadedKtDxNotify, CanBeInitialisedAgainAfterAnUnload) {
    ASSERT_TRUE(load());
    EXPECT_EQ(unloadMessage(), 0);
    EXPECT_EQ(initialise(), 0);
    Document& document = open(L"plan");
    EXPECT_EQ(attach(document), 1);
    runCommand(document);
    EXPECT_EQ(callbackCalls, 1);
}

TEST_F(LoadedKtDxNotify, AnswersAnUnloadThatCannotFreeItsResourceLibraryWithZero) {
    ASSERT_TRUE(load());
    Faults::instance().fail(HostCall::freeResource, 1, Orbx::eNotNow);
    EXPECT_EQ(unloadMessage(), 0);
    EXPECT_EQ(calls(HostCall::freeResource), 1U);
}

/// Lies in the dictionary under the service's name, and notes what is left of the module when it goes.
class WatchingService : public KtRxService {
public:
    WatchingService(Host& host, std::size_t* reactors, std::uint64_t* freed)
        : host_(host),
          reactors_(reactors),
          freed_(freed) {}

    WatchingService(const WatchingService&) = delete;
    WatchingService& operator=(const WatchingService&) = delete;

    ~WatchingService() override {
        *reactors_ = 0;
        host_.documents().reactors().inspect([this](const auto*, const auto&) { ++*reactors_; });
        *freed_ = Faults::instance().calls(HostCall::freeResource);
    }

private:
    Host& host_;
    std::size_t* reactors_;
    std::uint64_t* freed_;
};

TEST_F(LoadedKtDxNotify, UnloadsApplicationServiceAndResourcesInThisOrder) {
    ASSERT_TRUE(load());
    delete services().remove(kService);
    std::size_t reactors = 99;
    std::uint64_t freed = 99;
    ASSERT_TRUE(services().add(kService, new WatchingService(host_, &reactors, &freed)));
    ASSERT_TRUE(host_.modules().unload(kModule));
    EXPECT_EQ(reactors, 0U);
    EXPECT_EQ(freed, 0U);
    EXPECT_EQ(calls(HostCall::freeResource), 1U);
}

TEST_F(LoadedKtDxNotify, IsUnloadedWithoutAServiceDictionary) {
    ASSERT_TRUE(load());
    delete ktrxSysRegistry()->remove(kServiceDictionaryKey);
    EXPECT_TRUE(host_.modules().unload(kModule));
    EXPECT_EQ(reactorCount(), 0U);
}

/// Copies the module into a folder of the test's own.
class KtDxNotifyElsewhere : public LoadedKtDxNotify {
protected:
    KtDxNotifyElsewhere() { std::filesystem::copy_file(binaries() / kModule, folder_ / kModule); }

    ~KtDxNotifyElsewhere() override { host_.end(); } // before its file is removed

    TempFolder folder_;
};

TEST_F(KtDxNotifyElsewhere, FindsItsResourceLibraryInItsOwnFolder) {
    std::filesystem::copy_file(binaries() / kResources, folder_ / kResources);
    EXPECT_TRUE(host_.modules().load(folder_ / kModule));
}

TEST_F(KtDxNotifyElsewhere, FindsItsResourceLibraryNowhereElse) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(binaries()); // where there is one
    EXPECT_FALSE(host_.modules().load(folder_ / kModule));
    std::filesystem::current_path(before);
    EXPECT_THAT(host_.window().messageBoxes(), SizeIs(1));
}

/// What the host traced, line by line.
class KtDxNotifyTraced : public LoadedKtDxNotify {
protected:
    KtDxNotifyTraced() { EXPECT_TRUE(openTrace(file_)); }

    ~KtDxNotifyTraced() override { closeTrace(); }

    /// Number of the first line that tells of an event; the number of lines when none does.
    std::size_t lineOf(const std::string& event) {
        closeTrace();
        std::ifstream stream(file_);
        std::size_t number = 0;
        for (std::string line;
             std::getline(stream, line) && line.find('"' + event + '"') == std::string::npos;) {
            ++number;
        }
        EXPECT_TRUE(stream) << "no " << event;
        return number;
    }

    TempFolder folder_;
    std::filesystem::path file_ = folder_ / "trace.jsonl";
};

TEST_F(KtDxNotifyTraced, InitialisesResourcesServiceAndApplicationInThisOrder) {
    ASSERT_TRUE(load());
    EXPECT_LT(lineOf("resource load"), lineOf("dictionary add"));
    EXPECT_LT(lineOf("dictionary add"), lineOf("document manager reactor add"));
}

TEST_F(KtDxNotifyTraced, LeavesTheDocumentManagerBeforeItRemovesItsService) {
    ASSERT_TRUE(load());
    ASSERT_TRUE(host_.modules().unload(kModule));
    EXPECT_LT(lineOf("document manager reactor remove"), lineOf("dictionary remove"));
}

} // namespace

} // namespace kthost
