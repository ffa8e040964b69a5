#include <ktdx/KtDxNotify.h>

#include "app/KtDxDocument.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxExternalClientTimerReactor.h"
#include "notify/KtDxTimer.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <tuple>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DocTimerAttach : public ApplicationTest {
protected:
    DocTimerAttach() { host_.clock().set(1'000'000); }

    std::int32_t attach(std::size_t rank, std::uint32_t interval = 0) {
        return ktdxDocTimerAttach(&document_, callbacks_.at(rank), interval, 1);
    }

    std::int32_t detach(std::size_t rank, std::uint32_t interval = 0) {
        return ktdxDocTimerAttach(&document_, callbacks_.at(rank), interval, 0);
    }

    /// Ranks of the callbacks made after a command that does nothing.
    std::vector<std::size_t> callsAfterCommand() {
        EXPECT_TRUE(host_.documents().runCommand(
            document_, L"nothing", [](kthost::Document&) { return kthost::CommandResult::done; }));
        EXPECT_THAT(callbacks_.takeCalls(), IsEmpty()); // not before the loop runs
        host_.loop().pump();
        return callbacks_.takeCalls();
    }

    KtDxDocument* record() { return application_->getData(&document_, false); }

    KtDxTimer* enabledTimer() {
        const auto& timers = record()->enabledTimers();
        return timers.size() == 1 ? *timers.begin() : nullptr;
    }

    ClientCallbacks callbacks_;
};

TEST_F(DocTimerAttach, MakesNoRecordForNoCallback) {
    application_->removeData(&document_);
    EXPECT_EQ(ktdxDocTimerAttach(&document_, nullptr, 0, 1), 0);
    EXPECT_EQ(record(), nullptr);
}

TEST_F(DocTimerAttach, HasTheCallbackCalledAfterEveryCommand) {
    EXPECT_EQ(attach(0), 1);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, HasTheCallbackCalledAtTheFirstCheckWhateverTheInterval) {
    attach(0, 600'000);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, HasTheCallbackCalledAgainWhenTheIntervalHasElapsed) {
    attach(0, 500);
    callsAfterCommand();
    host_.clock().advance(499);
    EXPECT_THAT(callsAfterCommand(), IsEmpty());
    host_.clock().advance(1);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, CallsACallbackThatWasAttachedTwiceOnce) {
    attach(0);
    EXPECT_EQ(attach(0), 1);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, LetsGoOfACallbackThatWasAttachedTwiceAtOneDetach) {
    attach(0);
    attach(0);
    EXPECT_EQ(detach(0), 1);
    EXPECT_THAT(callsAfterCommand(), IsEmpty());
}

TEST_F(DocTimerAttach, HasCallbacksCalledInAscendingOrderOfAddress) {
    for (const std::size_t rank : {2U, 0U, 3U, 1U}) {
        attach(rank);
    }
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0, 1, 2, 3));
}

TEST_F(DocTimerAttach, AppliesTheLatestIntervalOfAnAttachToAll) {
    attach(0, 0);
    attach(1, 500);
    callsAfterCommand();
    EXPECT_THAT(callsAfterCommand(), IsEmpty());
    host_.clock().advance(500);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0, 1));
}

TEST_F(DocTimerAttach, AppliesTheLatestIntervalOfADetachToAll) {
    attach(0, 500);
    attach(1, 500);
    detach(1, 0);
    callsAfterCommand();
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, TakesAFirstIntervalAboveTheSignedOnesAsItIs) {
    attach(0, 0xFFFF'FFFB);
    EXPECT_EQ(enabledTimer()->interval(), 0xFFFF'FFFBU);
}

TEST_F(DocTimerAttach, TakesALaterIntervalAboveTheSignedOnesAsZero) {
    attach(0, 500);
    attach(0, 0xFFFF'FFFB);
    EXPECT_EQ(enabledTimer()->interval(), 0U);
}

TEST_F(DocTimerAttach, TakesAnyNumberButZeroForAttach) {
    EXPECT_EQ(ktdxDocTimerAttach(&document_, callbacks_.at(0), 0, -1), 1);
    EXPECT_EQ(ktdxDocTimerAttach(&document_, callbacks_.at(1), 0, 0x10000), 1);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0, 1));
}

TEST_F(DocTimerAttach, DisablesTheTimerWhenTheLastCallbackIsDetached) {
    attach(0);
    detach(0);
    EXPECT_THAT(record()->enabledTimers(), IsEmpty());
    EXPECT_EQ(gTimerCount, 1U); // kept for later attaches
    EXPECT_THAT(callsAfterCommand(), IsEmpty());
}

TEST_F(DocTimerAttach, TakesUpAgainAfterTheLastCallbackWasDetached) {
    attach(0);
    detach(0);
    attach(1);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(1));
}

TEST_F(DocTimerAttach, DetachesWhatWasNeverAttachedAndSetsTheInterval) {
    attach(0, 500);
    EXPECT_EQ(detach(1, 700), 1);
    EXPECT_EQ(enabledTimer()->interval(), 700U);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, MakesTheRecordTheTimerAndTheReactorAlsoWhenDetaching) {
    ASSERT_TRUE(application_->removeData(&document_));
    EXPECT_EQ(detach(0, 500), 1);
    ASSERT_NE(record(), nullptr);
    EXPECT_EQ(gTimerCount, 1U);
    const FailingAllocation failing(1, sizeof(KtDxExternalClientTimerReactor)); // is there already
    EXPECT_EQ(attach(0), 1);
    EXPECT_FALSE(failing.hasFailed());
}

TEST_F(DocTimerAttach, KeepsTheCallbacksOfDocumentsApart) {
    kthost::Document& other = open(L"other");
    attach(0);
    ASSERT_EQ(ktdxDocTimerAttach(&other, callbacks_.at(1), 0, 1), 1);
    host_.documents().setCurrent(&document_);
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

TEST_F(DocTimerAttach, FailsWithoutADocument) {
    EXPECT_EQ(ktdxDocTimerAttach(nullptr, callbacks_.at(0), 0, 1), 0);
}

TEST_F(DocTimerAttach, FailsWithoutACallbackAndMakesNoTimer) {
    EXPECT_EQ(ktdxDocTimerAttach(&document_, nullptr, 0, 1), 0);
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(DocTimerAttach, FailsWithoutAnApplication) {
    application_.reset();
    EXPECT_EQ(attach(0), 0);
}

TEST_F(DocTimerAttach, FailsForADocumentWithoutADrawing) {
    kthost::Document& empty = openWithoutDrawing(L"empty");
    EXPECT_EQ(ktdxDocTimerAttach(&empty, callbacks_.at(0), 0, 1), 0);
}

TEST_F(DocTimerAttach, FailsWhenThereIsNoMemoryForTheRecord) {
    application_->removeData(&document_);
    const FailingAllocation failing(1, sizeof(KtDxDocument));
    EXPECT_EQ(attach(0), 0);
    EXPECT_TRUE(failing.hasFailed());
}

TEST_F(DocTimerAttach, FailsWhenThereIsNoMemoryForTheTimer) {
    const FailingAllocation failing(1, sizeof(KtDxTimer));
    EXPECT_EQ(attach(0), 0);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(DocTimerAttach, FailsWhenThereIsNoMemoryForTheReactorAndKeepsTheTimer) {
    {
        const FailingAllocation failing(1, sizeof(KtDxExternalClientTimerReactor));
        EXPECT_EQ(attach(0), 0);
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_EQ(attach(0), 1);
    EXPECT_EQ(gTimerCount, 1U);
}

TEST_F(DocTimerAttach, ServesAgainAfterAnyLackOfMemoryWhenDetachedAndAttached) {
    ASSERT_EQ(ktdxDocTimerAttach(&open(L"other"), callbacks_.at(1), 0, 1),
              1); // has the hook and the filter made
    host_.documents().setCurrent(&document_);
    std::size_t k = 0;
    bool failed = true;
    while (failed) {
        application_->removeData(&document_);
        application_->getData(&document_, true);
        {
            const FailingAllocation failing(++k);
            EXPECT_NO_THROW(attach(0)) << k;
            failed = failing.hasFailed();
        }
        detach(0);
        EXPECT_EQ(attach(0), 1) << k;
        EXPECT_THAT(callsAfterCommand(), ElementsAre(0)) << k;
    }
    // Timer, reactor, and their places in three sets; the host's own note comes last.
    EXPECT_GT(k, 5U);
}

TEST_F(DocTimerAttach, TellsTheHostWhichCallbacksAreHeld) {
    attach(0);
    EXPECT_EQ(host_.callbacks().size(), 1U);
    detach(0);
    EXPECT_EQ(host_.callbacks().size(), 0U);
}

TEST_F(DocTimerAttach, TellsTheHostOnceOfACallbackAttachedTwice) {
    attach(0);
    attach(0);
    detach(0);
    EXPECT_EQ(host_.callbacks().size(), 0U);
}

TEST_F(DocTimerAttach, TellsTheHostThatNothingIsHeldWhenTheRecordGoes) {
    attach(0);
    ASSERT_EQ(gApplication->setEnabled(false), Orbx::eOk);
    EXPECT_EQ(host_.callbacks().size(), 0U);
}

TEST_F(DocTimerAttach, TellsTheHostNothingWhenItFails) {
    const FailingAllocation failing(1, sizeof(KtDxTimer));
    attach(0);
    EXPECT_EQ(host_.callbacks().size(), 0U);
}

TEST_F(DocTimerAttach, LetsACallbackDetachItself) {
    attach(0);
    attach(1);
    callbacks_.onCall(0, [this] { detach(0); });
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0, 1));
    EXPECT_THAT(callsAfterCommand(), ElementsAre(1));
}

TEST_F(DocTimerAttach, LetsACallbackDetachAll) {
    attach(0);
    attach(1);
    callbacks_.onCall(0, [this] {
        detach(0);
        detach(1);
    });
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
    EXPECT_THAT(callsAfterCommand(), IsEmpty());
}

TEST_F(DocTimerAttach, CallsACallbackThatAnotherBeforeItAttachesInTheSameRound) {
    attach(0);
    callbacks_.onCall(0, [this] { attach(1); });
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0, 1));
}

TEST_F(DocTimerAttach, CallsNobodyWhoseDocumentHasGone) {
    attach(0);
    kthost::Document& other = open(L"other");
    ASSERT_TRUE(host_.documents().close(document_));
    EXPECT_EQ(gTimerCount, 0U);
    EXPECT_TRUE(host_.documents().runCommand(other, L"nothing",
                                             [](kthost::Document&) { return kthost::CommandResult::done; }));
    host_.loop().pump();
    EXPECT_THAT(callbacks_.takeCalls(), IsEmpty());
}

TEST_F(DocTimerAttach, LetsACallbackThrowToTheHostAndGoesOnAtTheNextCheck) {
    attach(0);
    callbacks_.onCall(0, [] { throw 1; });
    EXPECT_THROW(callsAfterCommand(), int);
    callbacks_.takeCalls();
    callbacks_.onCall(0, {});
    EXPECT_THAT(callsAfterCommand(), ElementsAre(0));
}

} // namespace
