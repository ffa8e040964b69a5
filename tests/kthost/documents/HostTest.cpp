#include "kthost/documents/Host.h"

#include "kthost/database/ExternalReferences.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/documents/PrintSink.h"
#include "kthost/runtime/Faults.h"
#include "tests/kthost/documents/RecordingReactor.h"
#include "tests/kthost/modules/TestModules.h"

#include <KtDbObject.h>
#include <KtDbObjectReactor.h>
#include <KtRxDictionary.h>
#include <KtRxModule.h>
#include <KtRxService.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::uint32_t> messagesOfGoodModule(const ModuleLoader& modules) {
    auto* count = exportedFunction<std::size_t()>(modules, "GoodModule.kmx", "goodMessageCount");
    auto* at = exportedFunction<std::uint32_t(std::size_t)>(modules, "GoodModule.kmx", "goodMessageAt");
    std::vector<std::uint32_t> messages;
    for (std::size_t i = 0; i < count(); ++i) {
        messages.push_back(at(i));
    }
    return messages;
}

TEST(Host, HasAllItsPartsWhileItRuns) {
    Host host;
    EXPECT_EQ(ktDocManagerPtr(), &host.documents());
    EXPECT_EQ(ktrxSysRegistry(), &host.registry().root());
    EXPECT_NE(AfxGetThread(), nullptr);
    EXPECT_EQ(Host::current(), &host);
}

TEST(Host, HasNoneOfThemAfterItsEnd) {
    { const Host host; }
    EXPECT_EQ(ktDocManagerPtr(), nullptr);
    EXPECT_EQ(ktrxSysRegistry(), nullptr);
    EXPECT_EQ(AfxGetThread(), nullptr);
    EXPECT_EQ(Host::current(), nullptr);
}

TEST(Host, EndsCleanWithoutModules) {
    Host host;
    host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    EXPECT_THAT(host.end().findings, IsEmpty());
}

TEST(Host, EndsCleanWithAModuleThatLeavesNothing) {
    Host host;
    ASSERT_TRUE(host.modules().load(testModule("GoodModule.kmx")));
    host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    EXPECT_THAT(host.end().findings, IsEmpty());
}

TEST(Host, ClosesDocumentsTellsOfItsEndAndUnloadsInThisOrder) {
    Host host;
    ASSERT_TRUE(host.modules().load(testModule("GoodModule.kmx")));
    host.documents().create(L"plan", nullptr);
    std::vector<std::uint32_t> messages;
    host.modules().onLeaving = [&](const LoadedModule&) { messages = messagesOfGoodModule(host.modules()); };
    host.end();
    EXPECT_THAT(messages, ElementsAre(KtRx::kInitialise, KtRx::kDrawingOpened, KtRx::kDrawingClosing,
                                      KtRx::kQuit, KtRx::kUnload));
}

TEST(Host, EndsOnce) {
    RecordingReactor reactor;
    Host host;
    host.documents().create(L"plan", nullptr);
    host.documents().addReactor(&reactor);
    host.end();
    const std::size_t findings = host.report().findings.size();
    EXPECT_EQ(host.end().findings.size(), findings);
    EXPECT_THAT(reactor.heard, ElementsAre(L"to be destroyed plan", L"current nothing", L"destroyed plan"));
}

TEST(Host, DisarmsFaultsWhenItStarts) {
    Faults::instance().fail(HostCall::documentManager, 1, Orbx::eMissing, true);
    const Host host;
    EXPECT_NE(ktDocManagerPtr(), nullptr);
}

TEST(Host, PutsStandardOutputBackWhenItEnds) {
    bool used = false;
    {
        const Host host;
        setPrintSink([&used](std::wstring_view) { used = true; });
    }
    testing::internal::CaptureStdout();
    ktedPrint(L"line");
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(used);
}

class CarelessModule : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(host.modules().load(testModule("CarelessModule.kmx"))); }

    template <typename Function>
    Function* exported(const char* symbol) const {
        return exportedFunction<Function>(const_cast<Host&>(host).modules(), "CarelessModule.kmx", symbol);
    }

    const std::vector<std::string>& unload() {
        EXPECT_TRUE(host.modules().unload("CarelessModule.kmx"));
        return host.report().findings;
    }

    Host host;
};

TEST_F(CarelessModule, ThatLeavesNothingIsClean) {
    EXPECT_THAT(unload(), IsEmpty());
}

TEST_F(CarelessModule, IsFoundToLeaveAFilter) {
    ASSERT_TRUE(exported<bool()>("carelessAddFilter")());
    EXPECT_THAT(unload(), ElementsAre(StartsWith("after unloading CarelessModule.kmx: message filter left "
                                                 "registered (CarelessModule.kmx+0x")));
}

TEST_F(CarelessModule, LosesItsFilterWithItsMemory) {
    ASSERT_TRUE(exported<bool()>("carelessAddFilter")());
    unload();
    PostMessageW(host.window().handle(), 0x8001, 0, 0);
    EXPECT_EQ(host.loop().pump(), 1U);
}

TEST_F(CarelessModule, IsFoundToLeaveACommand) {
    ASSERT_TRUE(exported<bool()>("carelessAddCommand")());
    EXPECT_THAT(unload(), ElementsAre(HasSubstr("command left registered: careless (CarelessModule.kmx+0x")));
}

TEST_F(CarelessModule, LosesItsCommandWithItsMemory) {
    ASSERT_TRUE(exported<bool()>("carelessAddCommand")());
    unload();
    EXPECT_EQ(host.commands().find(L"careless"), nullptr);
}

TEST_F(CarelessModule, IsFoundToLeaveADocumentManagerReactor) {
    exported<void()>("carelessAddManagerReactor")();
    EXPECT_THAT(unload(), ElementsAre(AllOf(HasSubstr("reactor left on the document manager: "),
                                            HasSubstr("CarelessManagerReactor (CarelessModule.kmx+0x"))));
}

TEST_F(CarelessModule, LosesItsDocumentManagerReactorWithItsMemory) {
    exported<void()>("carelessAddManagerReactor")();
    unload();
    EXPECT_NO_FATAL_FAILURE(host.documents().create(L"plan", nullptr));
}

TEST_F(CarelessModule, IsFoundToLeaveAService) {
    host.modules().send(*host.modules().find("CarelessModule.kmx"), 3000);
    EXPECT_THAT(unload(), ElementsAre("after unloading CarelessModule.kmx: service left registered: Careless "
                                      "(by CarelessModule.kmx)"));
}

TEST_F(CarelessModule, IsFoundToLeaveACallback) {
    Document& plan = host.documents().create(L"plan", nullptr);
    ktrxNoteCallback(&plan, KtRxCallbackList::idleTimer, exported<KtRxCallback()>("carelessGetCallback")(),
                     true);
    EXPECT_THAT(unload(), ElementsAre(HasSubstr("callback left attached for plan (CarelessModule.kmx+0x")));
}

TEST_F(CarelessModule, IsFoundToLeaveAReactorOnAnObject) {
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForNotify), Orbx::eOk);
    exported<void(const KtDbObject*)>("carelessAddObjectReactor")(table);
    ASSERT_EQ(table->close(), Orbx::eOk);
    EXPECT_THAT(unload(), ElementsAre(AllOf(HasSubstr("reactor left on KtDbBlockTable 1"),
                                            HasSubstr("(CarelessModule.kmx+0x"))));
}

TEST_F(CarelessModule, LosesItsObjectReactorWithItsMemory) {
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForNotify), Orbx::eOk);
    exported<void(const KtDbObject*)>("carelessAddObjectReactor")(table);
    ASSERT_EQ(table->close(), Orbx::eOk);
    unload();
    EXPECT_TRUE(attachedReactors().empty());
}

TEST_F(CarelessModule, IsNotBlamedForWhatOthersLeave) {
    RecordingReactor reactor;
    host.documents().addReactor(&reactor);
    EXPECT_THAT(unload(), IsEmpty());
    host.documents().removeReactor(&reactor);
}

TEST(HostAudit, FindsObjectsLeftOpenWhenAModuleIsUnloaded) {
    Host host;
    ASSERT_TRUE(host.modules().load(testModule("GoodModule.kmx")));
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForRead), Orbx::eOk);
    ASSERT_TRUE(host.modules().unload("GoodModule.kmx"));
    EXPECT_THAT(host.report().findings,
                ElementsAre(HasSubstr("after unloading GoodModule.kmx: left open for reading: "
                                      "KtDbBlockTable 1")));
    ASSERT_EQ(table->close(), Orbx::eOk);
}

TEST(HostAudit, FindsObjectsLeftOpenWhenTheirDocumentIsClosed) {
    Host host;
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForRead), Orbx::eOk);
    ASSERT_TRUE(host.documents().close(plan));
    EXPECT_THAT(host.report().findings,
                ElementsAre(HasSubstr("after closing plan: left open for reading: KtDbBlockTable 1")));
}

TEST(HostAudit, FindsNothingInDocumentsThatStayOpen) {
    Host host;
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    Document& other = host.documents().create(L"other", std::make_unique<Database>(L"other"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForRead), Orbx::eOk);
    ASSERT_TRUE(host.documents().close(other));
    EXPECT_THAT(host.report().findings, IsEmpty());
    ASSERT_EQ(table->close(), Orbx::eOk);
}

TEST(HostAudit, FindsReactorsLeftOnObjectsAtTheEnd) {
    class Reactor : public KtDbObjectReactor {
    } reactor;

    Host host;
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, plan.database()->blockTableId(), KtDb::kForNotify), Orbx::eOk);
    ASSERT_EQ(table->addReactor(&reactor), Orbx::eOk);
    ASSERT_EQ(table->close(), Orbx::eOk);
    EXPECT_THAT(host.end().findings, ElementsAre(HasSubstr("reactor left on KtDbBlockTable 1")));
}

TEST(HostAudit, FindsReactorsLeftInAnAttachedDrawingWithTheDocumentThatItIsAttachedTo) {
    class Reactor : public KtDbObjectReactor {
    } reactor;

    Database* attached = nullptr;
    const auto load = [&attached] {
        auto loaded = std::make_unique<Database>(L"attached");
        attached = loaded.get();
        return loaded;
    };
    Host host;
    auto drawing = std::make_unique<Database>(L"plan");
    KtDbObjectId record;
    ASSERT_EQ(attachDrawing(*drawing, L"X1", load, record), Orbx::eOk);
    KtDbObject* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, attached->blockTableId(), KtDb::kForNotify), Orbx::eOk);
    ASSERT_EQ(table->addReactor(&reactor), Orbx::eOk);
    ASSERT_EQ(table->close(), Orbx::eOk);
    host.documents().create(L"plan", std::move(drawing));
    host.documents().create(L"other", std::make_unique<Database>(L"other")); // closed first
    EXPECT_THAT(host.end().findings,
                ElementsAre(HasSubstr("after closing plan: reactor left on KtDbBlockTable 1")));
}

TEST(HostAudit, FindsWhateverIsLeftAtTheEnd) {
    RecordingReactor reactor;
    Host host;
    host.documents().addReactor(&reactor);
    ktrxRegisterService(L"Clock");
    EXPECT_THAT(host.end().findings,
                ElementsAre(HasSubstr("at the end: reactor left on the document manager: RecordingReactor"),
                            HasSubstr("at the end: service left registered: Clock")));
}

TEST(HostAudit, FindsTheRemainsOfAModuleThatFailedToInitialise) {
    Host host;
    ASSERT_FALSE(host.modules().load(testModule("HalfwayModule.kmx")));
    EXPECT_THAT(host.end().findings,
                ElementsAre(StartsWith("after unloading HalfwayModule.kmx: message filter left registered")));
}

TEST(HostAudit, FindsNothingOfAModuleThatFailedToInitialiseAndLeftNothing) {
    Host host;
    ASSERT_FALSE(host.modules().load(testModule("FailingInitialise.kmx")));
    EXPECT_THAT(host.end().findings, IsEmpty());
}

} // namespace
} // namespace kthost
