#include "kthost/documents/DocumentManager.h"

#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "tests/kthost/documents/RecordingReactor.h"
#include "tests/kthost/modules/TestModules.h"

#include <KtEd.h>
#include <KtRxCallback.h>
#include <KtRxModule.h>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Documents : public testing::Test {
protected:
    // The tests' reactors are gone before the manager announces its end.
    void TearDown() override {
        manager.reactors().removeWhere([](const CodeOrigin&) { return true; });
        Faults::instance().reset();
    }

    Document& open(const wchar_t* name) { return manager.create(name, nullptr); }

    std::vector<std::wstring> iterated() {
        std::vector<std::wstring> names;
        const std::unique_ptr<KtApDocumentIterator> iterator(manager.newDocumentIterator());
        for (; !iterator->done(); iterator->step()) {
            names.emplace_back(iterator->document()->name());
        }
        return names;
    }

    DocumentManager manager;
    RecordingReactor reactor;
};

TEST_F(Documents, AreReachedThroughTheHostsManager) {
    EXPECT_EQ(ktDocManagerPtr(), &manager);
}

TEST_F(Documents, AreNotReachedWhenAFaultIsAskedFor) {
    Faults::instance().fail(HostCall::documentManager, 1, Orbx::eMissing);
    EXPECT_EQ(ktDocManagerPtr(), nullptr);
    EXPECT_EQ(ktDocManagerPtr(), &manager);
}

TEST_F(Documents, AreAnnouncedAndThenMadeCurrent) {
    manager.addReactor(&reactor);
    open(L"plan");
    EXPECT_THAT(reactor.heard, ElementsAre(L"created plan", L"current plan"));
}

TEST_F(Documents, MayHaveNoDrawing) {
    EXPECT_EQ(open(L"empty").database(), nullptr);
}

TEST_F(Documents, HaveTheirDrawing) {
    auto database = std::make_unique<Database>(L"plan");
    const Database* drawing = database.get();
    EXPECT_EQ(manager.create(L"plan", std::move(database)).database(), drawing);
}

TEST_F(Documents, AreIteratedInTheOrderOfOpening) {
    open(L"b");
    open(L"a");
    open(L"c");
    EXPECT_THAT(iterated(), ElementsAre(L"b", L"a", L"c"));
}

TEST_F(Documents, AreSkippedByAnIterationOnceClosed) {
    open(L"a");
    Document& closed = open(L"b");
    open(L"c");
    const std::unique_ptr<KtApDocumentIterator> iterator(manager.newDocumentIterator());
    ASSERT_TRUE(manager.close(closed));
    iterator->step();
    EXPECT_STREQ(iterator->document()->name(), L"c");
}

TEST_F(Documents, AreNullBehindTheEndOfAnIteration) {
    const std::unique_ptr<KtApDocumentIterator> iterator(manager.newDocumentIterator());
    EXPECT_TRUE(iterator->done());
    iterator->step();
    EXPECT_EQ(iterator->document(), nullptr);
}

TEST_F(Documents, CannotBeIteratedWhenAFaultIsAskedFor) {
    Faults::instance().fail(HostCall::documentIterator, 1, Orbx::eMissing);
    EXPECT_EQ(manager.newDocumentIterator(), nullptr);
}

TEST_F(Documents, AreUnknownWhileTheyAreOnlyPrepared) {
    manager.addReactor(&reactor);
    manager.prepare(L"draft", nullptr);
    EXPECT_THAT(iterated(), IsEmpty());
    EXPECT_EQ(manager.curDocument(), nullptr);
    EXPECT_THAT(reactor.heard, IsEmpty());
}

TEST_F(Documents, AreCancelledBeforeTheyAreAnnounced) {
    manager.addReactor(&reactor);
    ASSERT_TRUE(manager.cancelCreation(manager.prepare(L"draft", nullptr)));
    EXPECT_THAT(reactor.heard, ElementsAre(L"cancelled draft"));
}

TEST_F(Documents, AreCancelledAfterTheyWereAnnounced) {
    Document& draft = manager.prepare(L"draft", nullptr);
    manager.announce(draft);
    manager.addReactor(&reactor);
    ASSERT_TRUE(manager.cancelCreation(draft));
    EXPECT_THAT(reactor.heard, ElementsAre(L"cancelled draft"));
    EXPECT_THAT(iterated(), IsEmpty());
}

TEST_F(Documents, AreAnnouncedBeforeTheyAreDestroyed) {
    open(L"other");
    Document& plan = open(L"plan");
    manager.addReactor(&reactor);
    ASSERT_TRUE(manager.close(plan));
    EXPECT_THAT(reactor.heard, ElementsAre(L"to be destroyed plan", L"current other", L"destroyed plan"));
}

TEST_F(Documents, GiveWayToTheOneThatWasCurrentBefore) {
    Document& first = open(L"first");
    open(L"second");
    Document& third = open(L"third");
    manager.setCurrent(&first);
    manager.setCurrent(&third);
    ASSERT_TRUE(manager.close(third));
    EXPECT_EQ(manager.curDocument(), &first);
}

TEST_F(Documents, LeaveNoneCurrentWhenTheLastIsClosed) {
    Document& plan = open(L"plan");
    manager.addReactor(&reactor);
    ASSERT_TRUE(manager.close(plan));
    EXPECT_EQ(manager.curDocument(), nullptr);
    EXPECT_THAT(reactor.heard, ElementsAre(L"to be destroyed plan", L"current nothing", L"destroyed plan"));
}

TEST_F(Documents, StayCurrentWhenAnotherIsClosed) {
    Document& other = open(L"other");
    Document& plan = open(L"plan");
    manager.addReactor(&reactor);
    ASSERT_TRUE(manager.close(other));
    EXPECT_EQ(manager.curDocument(), &plan);
    EXPECT_THAT(reactor.heard, ElementsAre(L"to be destroyed other", L"destroyed other"));
}

TEST_F(Documents, AreStillOpenAndCurrentWhileTheirEndIsAnnounced) {
    class Looking : public KtApDocManagerReactor {
    public:
        void documentToBeDestroyed(KtApDocument* document) override {
            const std::unique_ptr<KtApDocumentIterator> iterator(ktDocManagerPtr()->newDocumentIterator());
            wasOpen = iterator->document() == document;
            wasCurrent = ktDocManagerPtr()->curDocument() == document;
        }

        bool wasOpen = false;
        bool wasCurrent = false;
    } looking;

    Document& plan = open(L"plan");
    manager.addReactor(&looking);
    ASSERT_TRUE(manager.close(plan));
    EXPECT_TRUE(looking.wasOpen);
    EXPECT_TRUE(looking.wasCurrent);
}

TEST_F(Documents, AreAnnouncedAsCurrentOnceOnly) {
    Document& plan = open(L"plan");
    manager.addReactor(&reactor);
    manager.setCurrent(&plan);
    EXPECT_THAT(reactor.heard, IsEmpty());
}

TEST_F(Documents, AreAllClosedWithTheirManager) {
    {
        DocumentManager second;
        second.create(L"a", nullptr);
        second.create(L"b", nullptr);
        second.addReactor(&reactor);
    }
    EXPECT_THAT(reactor.heard, ElementsAre(L"to be destroyed b", L"current a", L"destroyed b",
                                           L"to be destroyed a", L"current nothing", L"destroyed a"));
}

TEST_F(Documents, CannotBeClosedWhileACallbackRuns) {
    Document& plan = open(L"plan");
    const ModuleCodeScope running(ModuleCodeKind::callback, "PartsList.kmx");
    const HostResult result = manager.close(plan);
    EXPECT_EQ(result.status, Orbx::eNotNow);
    EXPECT_EQ(result.reason, "plan cannot be closed while a callback of PartsList.kmx is running");
}

TEST_F(Documents, StayOpenWhenTheirClosingIsRefused) {
    Document& plan = open(L"plan");
    manager.addReactor(&reactor);
    const ModuleCodeScope running(ModuleCodeKind::filter, "");
    EXPECT_FALSE(manager.close(plan));
    EXPECT_THAT(reactor.heard, IsEmpty());
    EXPECT_THAT(iterated(), ElementsAre(L"plan"));
}

TEST_F(Documents, CannotBeGivenUpWhileACallbackRuns) {
    Document& draft = manager.prepare(L"draft", nullptr);
    const ModuleCodeScope running(ModuleCodeKind::callback, "");
    EXPECT_EQ(manager.cancelCreation(draft).status, Orbx::eNotNow);
}

TEST_F(Documents, CannotBeClosedInsideANotification) {
    class Closing : public KtApDocManagerReactor {
    public:
        void documentCreated(KtApDocument* document) override {
            status = DocumentManager::current()->close(static_cast<Document&>(*document)).status;
        }

        Orbx::ErrorStatus status = Orbx::eOk;
    } closing;

    manager.addReactor(&closing);
    open(L"plan");
    EXPECT_EQ(closing.status, Orbx::eNotNow);
}

TEST_F(Documents, CountTheInputThatWaits) {
    Document& plan = open(L"plan");
    plan.setPendingInputCount(3);
    EXPECT_EQ(manager.pendingInputCount(&plan), 3);
}

TEST_F(Documents, HaveNoInputWaitingWhenTheyAreUnknown) {
    EXPECT_EQ(manager.pendingInputCount(nullptr), 0);
}

TEST_F(Documents, AreNotQuiescentWhileADialogIsOpen) {
    Document& plan = open(L"plan");
    EXPECT_TRUE(plan.isQuiescent());
    plan.setDialogOpen(true);
    EXPECT_FALSE(plan.isQuiescent());
}

TEST_F(Documents, AreFoundByName) {
    Document& plan = open(L"plan");
    EXPECT_EQ(manager.find(L"plan"), &plan);
    EXPECT_EQ(manager.find(L"other"), nullptr);
}

TEST_F(Documents, AreFoundByDrawing) {
    open(L"without");
    Document& plan = manager.create(L"plan", std::make_unique<Database>(L"plan"));
    EXPECT_EQ(manager.documentOf(plan.database()), &plan);
    EXPECT_EQ(manager.documentOf(nullptr), nullptr);
}

TEST_F(Documents, TakeTheCallbacksHeldForThemAlong) {
    const CallbackLedger ledger;
    Document& plan = open(L"plan");
    ktrxNoteCallback(
        &plan, KtRxCallbackList::idleTimer, [] {}, true);
    ASSERT_TRUE(manager.close(plan));
    EXPECT_EQ(ledger.size(), 0U);
}

TEST_F(Documents, AreToldToModulesWhenTheyOpenAndClose) {
    ModuleLoader modules;
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    ASSERT_TRUE(manager.close(open(L"plan")));
    auto* count = exportedFunction<std::size_t()>(modules, "GoodModule.kmx", "goodMessageCount");
    auto* at = exportedFunction<std::uint32_t(std::size_t)>(modules, "GoodModule.kmx", "goodMessageAt");
    ASSERT_EQ(count(), 3U);
    EXPECT_EQ(at(1), KtRx::kDrawingOpened);
    EXPECT_EQ(at(2), KtRx::kDrawingClosing);
}

TEST_F(Documents, AreNotToldToModulesWhenTheyAreCancelledUnannounced) {
    ModuleLoader modules;
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    ASSERT_TRUE(manager.cancelCreation(manager.prepare(L"draft", nullptr)));
    EXPECT_EQ(exportedFunction<std::size_t()>(modules, "GoodModule.kmx", "goodMessageCount")(), 1U);
}

TEST_F(Documents, TellAReactorOnceHoweverOftenItIsAdded) {
    manager.addReactor(&reactor);
    manager.addReactor(&reactor);
    manager.announce(manager.prepare(L"plan", nullptr));
    EXPECT_THAT(reactor.heard, ElementsAre(L"created plan"));
}

TEST_F(Documents, TellAReactorNothingOnceItIsRemoved) {
    manager.addReactor(&reactor);
    manager.removeReactor(&reactor);
    open(L"plan");
    EXPECT_THAT(reactor.heard, IsEmpty());
}

TEST_F(Documents, TakeNoNullReactor) {
    manager.addReactor(nullptr);
    manager.removeReactor(nullptr);
    EXPECT_NO_THROW(open(L"plan"));
}

TEST_F(Documents, LetAReactorRemoveItselfInsideANotification) {
    class Leaving : public RecordingReactor {
    public:
        void documentCreated(KtApDocument* document) override {
            RecordingReactor::documentCreated(document);
            ktDocManagerPtr()->removeReactor(this);
        }
    } leaving;

    manager.addReactor(&leaving);
    manager.addReactor(&reactor);
    open(L"plan");
    EXPECT_THAT(leaving.heard, ElementsAre(L"created plan"));
    EXPECT_THAT(reactor.heard, ElementsAre(L"created plan", L"current plan"));
}

TEST_F(Documents, TellAReactorAddedInsideANotificationFromTheNextOn) {
    class Inviting : public KtApDocManagerReactor {
    public:
        explicit Inviting(RecordingReactor& guest) : guest_(guest) {}

        void documentCreated(KtApDocument* /*document*/) override { ktDocManagerPtr()->addReactor(&guest_); }

    private:
        RecordingReactor& guest_;
    } inviting(reactor);

    manager.addReactor(&inviting);
    open(L"plan");
    EXPECT_THAT(reactor.heard, ElementsAre(L"current plan"));
}

TEST(DocumentsEnd, LeavesNoManager) {
    { const DocumentManager manager; }
    EXPECT_EQ(ktDocManagerPtr(), nullptr);
    EXPECT_FALSE(ktedCommandActive());
}

} // namespace
} // namespace kthost
