#include "notify/KtDxCmdLineHook.h"

#include <ktdx/KtDxNotify.h>

#include "app/KtDxDocument.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <tuple>
#include <utility>

namespace {

using kthost::HostCall;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT kIdleCheck = 0xC123;

/// A document that is idle, current and has a callback attached: an idle check calls it unless something is
/// in the way. Every test puts one thing in the way.
class IdleCheck : public ApplicationTest {
protected:
    IdleCheck() {
        gIdleCheckMessage = kIdleCheck;
        EXPECT_EQ(ktdxDocTimerAttach(&document_, callbacks_.at(0), 0, 1), 1);
    }

    ~IdleCheck() override { EXPECT_EQ(verdicts_, consumed_); }

    /// Shows the filter an idle check for a document, which it has to consume, and counts the callbacks made.
    std::size_t callsAtCheckOf(KtApDocument* document) {
        return callsAtCheckOf(reinterpret_cast<WPARAM>(document));
    }

    std::size_t callsAtCheckOf(WPARAM document) {
        MSG message{host_.window().handle(), gIdleCheckMessage, document, 0, 0, {0, 0}};
        callbacks_.takeCalls();
        ++verdicts_;
        consumed_ += idleCheckFilter(&message) ? 1 : 0;
        return callbacks_.takeCalls().size();
    }

    ClientCallbacks callbacks_;
    int verdicts_ = 0;
    int consumed_ = 0;
};

TEST_F(IdleCheck, OfAnIdleDocumentRunsItsTimers) {
    EXPECT_EQ(callsAtCheckOf(&document_), 1U);
}

TEST_F(IdleCheck, RunsOnlyTheTimersOfItsDocument) {
    kthost::Document& other = open(L"other");
    ASSERT_EQ(ktdxDocTimerAttach(&other, callbacks_.at(1), 0, 1), 1);
    MSG message{nullptr, kIdleCheck, reinterpret_cast<WPARAM>(static_cast<KtApDocument*>(&other)),
                0,       0,          {0, 0}};
    EXPECT_TRUE(idleCheckFilter(&message));
    EXPECT_THAT(callbacks_.takeCalls(), ElementsAre(1));
}

TEST_F(IdleCheck, LetsEveryOtherMessagePassWhateverItsParameters) {
    for (const UINT id : {0U, 1U, kIdleCheck - 1, kIdleCheck + 1}) {
        MSG message{nullptr, id, reinterpret_cast<WPARAM>(static_cast<KtApDocument*>(&document_)),
                    0,       0,  {0, 0}};
        EXPECT_FALSE(idleCheckFilter(&message)) << id;
    }
    EXPECT_THAT(callbacks_.takeCalls(), IsEmpty());
}

TEST_F(IdleCheck, TakesMessageZeroForItselfBeforeAnythingWasPosted) {
    gIdleCheckMessage = 0;
    EXPECT_EQ(callsAtCheckOf(&document_), 1U);
}

TEST_F(IdleCheck, ConsumesMessageZeroWithoutADocumentBeforeAnythingWasPosted) {
    gIdleCheckMessage = 0;
    EXPECT_EQ(callsAtCheckOf(nullptr), 0U);
}

TEST_F(IdleCheck, WithoutADocumentIsConsumed) {
    EXPECT_EQ(callsAtCheckOf(nullptr), 0U);
}

TEST_F(IdleCheck, WithoutADocumentIsConsumedWhenNoneIsCurrent) {
    host_.documents().setCurrent(nullptr);
    EXPECT_EQ(callsAtCheckOf(nullptr), 0U);
}

TEST_F(IdleCheck, WithoutAnApplicationIsConsumed) {
    KtDxApplication* application = std::exchange(gApplication, nullptr);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
    gApplication = application;
}

TEST_F(IdleCheck, WithoutADocumentManagerIsConsumed) {
    faults().fail(HostCall::documentManager, 1, Orbx::eInvalidInput);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
}

TEST_F(IdleCheck, WhoseDocumentManagerGoesMeanwhileIsConsumed) {
    faults().fail(HostCall::documentManager, 2, Orbx::eInvalidInput);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
}

TEST_F(IdleCheck, OfADocumentThatIsNoLongerCurrentIsConsumed) {
    open(L"other");
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
}

TEST_F(IdleCheck, OfADocumentThatHasGoneIsConsumedWithoutTouchingIt) {
    const auto gone = reinterpret_cast<WPARAM>(static_cast<KtApDocument*>(&document_));
    ASSERT_TRUE(host_.documents().close(document_));
    EXPECT_EQ(callsAtCheckOf(gone), 0U);
}

TEST_F(IdleCheck, OfADocumentThatIsNotQuiescentIsConsumed) {
    document_.setDialogOpen(true);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
    document_.setDialogOpen(false);
    EXPECT_EQ(callsAtCheckOf(&document_), 1U);
}

TEST_F(IdleCheck, OfADocumentWithoutARecordIsConsumedAndMakesNone) {
    ASSERT_TRUE(application_->removeData(&document_));
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
    EXPECT_EQ(application_->getData(&document_, false), nullptr);
}

TEST_F(IdleCheck, DuringACommandOfAnotherDocumentIsConsumed) {
    kthost::Document& other = open(L"other");
    host_.documents().setCurrent(&document_);
    std::size_t calls = 1;
    ASSERT_TRUE(host_.documents().runCommand(other, L"set", [&](kthost::Document&) {
        EXPECT_TRUE(document_.isQuiescent());
        calls = callsAtCheckOf(&document_);
        return kthost::CommandResult::done;
    }));
    EXPECT_EQ(calls, 0U);
}

TEST_F(IdleCheck, OfADocumentWithPendingInputIsConsumed) {
    document_.setPendingInputCount(1);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
}

TEST_F(IdleCheck, IsNotKeptFromItsDocumentByPendingInputOfAnother) {
    open(L"other").setPendingInputCount(1);
    host_.documents().setCurrent(&document_);
    EXPECT_EQ(callsAtCheckOf(&document_), 1U);
}

TEST_F(IdleCheck, WhileInputWaitsIsConsumed) {
    host_.window().setInputWaiting(true);
    EXPECT_EQ(callsAtCheckOf(&document_), 0U);
}

TEST_F(IdleCheck, IsNotPostedAgainWhenItCameToNothing) {
    document_.setPendingInputCount(1);
    callsAtCheckOf(&document_);
    EXPECT_THAT(host_.loop().queue(), IsEmpty());
}

class IdleCheckUnderLock : public IdleCheck,
                           public testing::WithParamInterface<std::pair<KtAp::DocLockMode, bool>> {};

TEST_P(IdleCheckUnderLock, RunsTheTimersOnlyIfTheModeIsNoneOrNotLocked) {
    const auto [mode, runs] = GetParam();
    host_.documents().lock(document_, mode, L"palette");
    ASSERT_EQ(document_.lockMode(false), mode);
    EXPECT_EQ(callsAtCheckOf(&document_), runs ? 1U : 0U);
    host_.documents().unlock(document_, L"palette");
}

INSTANTIATE_TEST_SUITE_P(EveryMode, IdleCheckUnderLock,
                         testing::Values(std::pair(KtAp::kNone, true), std::pair(KtAp::kNotLocked, true),
                                         std::pair(KtAp::kAutoWrite, false), std::pair(KtAp::kWrite, false),
                                         std::pair(KtAp::kRead, false)));

TEST_F(IdleCheck, IsNotKeptFromItsDocumentByALockOfAnotherContext) {
    host_.documents().lock(document_, KtAp::kWrite, L"other", kthost::LockContext::other);
    ASSERT_EQ(document_.lockMode(true), KtAp::kWrite);
    EXPECT_EQ(callsAtCheckOf(&document_), 1U);
    host_.documents().unlock(document_, L"other");
}

/// Gives a record of the test's own for whatever document.
class ApplicationWithRecord : public KtDxApplication {
public:
    KtDxDocument* getData(KtApDocument* document, bool create) override {
        return record == nullptr ? KtDxApplication::getData(document, create) : record;
    }

    KtDxDocument* record = nullptr;
};

/// A record whose timer is on whatever it says of itself.
class WatchedRecord : public KtDxDocument {
public:
    using KtDxDocument::KtDxDocument;

    bool isEnabled() const override { return saysItIsOn; }

    bool saysItIsOn = true;
};

class IdleCheckOfRecord : public ModuleTest {
protected:
    std::size_t callsWith(KtDxDocument& record) {
        EXPECT_EQ(record.attachTimerCallback(callbacks_.at(0), 0, true), Orbx::eOk);
        application_.record = &record;
        MSG message{nullptr,
                    gIdleCheckMessage,
                    reinterpret_cast<WPARAM>(static_cast<KtApDocument*>(&document_)),
                    0,
                    0,
                    {0, 0}};
        EXPECT_TRUE(idleCheckFilter(&message));
        application_.record = nullptr;
        return callbacks_.takeCalls().size();
    }

    ClientCallbacks callbacks_;
    kthost::Document& other_ = open(L"other");
    kthost::Document& document_ = open(L"plan");
    ApplicationWithRecord application_;
};

TEST_F(IdleCheckOfRecord, RunsTheTimersOfARecordThatIsOn) {
    WatchedRecord record(&document_);
    EXPECT_EQ(callsWith(record), 1U);
}

TEST_F(IdleCheckOfRecord, PassesOverARecordThatIsOff) {
    WatchedRecord record(&document_);
    record.saysItIsOn = false;
    EXPECT_EQ(callsWith(record), 0U);
}

TEST_F(IdleCheckOfRecord, PassesOverARecordWithoutADocument) {
    WatchedRecord record(nullptr);
    EXPECT_EQ(callsWith(record), 0U);
}

TEST_F(IdleCheckOfRecord, AsksTheDocumentOfTheRecordWhetherItIsQuiescent) {
    WatchedRecord record(&other_);
    EXPECT_EQ(callsWith(record), 1U);
    other_.setDialogOpen(true);
    EXPECT_EQ(callsWith(record), 0U);
}

TEST_F(IdleCheckOfRecord, AsksTheDocumentOfTheMessageToo) {
    WatchedRecord record(&other_);
    document_.setDialogOpen(true);
    EXPECT_EQ(callsWith(record), 0U);
}

TEST_F(IdleCheckOfRecord, AsksTheDocumentOfTheRecordForItsLock) {
    WatchedRecord record(&other_);
    host_.documents().lock(other_, KtAp::kWrite, L"palette");
    EXPECT_EQ(callsWith(record), 0U);
    host_.documents().unlock(other_, L"palette");
}

TEST_F(IdleCheckOfRecord, AsksForThePendingInputOfTheRecordsDocument) {
    WatchedRecord record(&other_);
    other_.setPendingInputCount(1);
    EXPECT_EQ(callsWith(record), 0U);
}

} // namespace
