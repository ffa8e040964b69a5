#include "app/KtDxDocument.h"

#include "blocks/KtDxBlocks.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxExternalClientTimerReactor.h"
#include "notify/KtDxTimer.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <tuple>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DocumentRecord : public ModuleTest {
protected:
    Orbx::ErrorStatus attach(std::size_t rank, std::uint32_t interval = 0) {
        return record_->attachTimerCallback(callbacks_.at(rank), interval, true);
    }

    Orbx::ErrorStatus detach(std::size_t rank, std::uint32_t interval = 0) {
        return record_->attachTimerCallback(callbacks_.at(rank), interval, false);
    }

    std::vector<std::size_t> callsAtCheck() {
        record_->checkTimers();
        return callbacks_.takeCalls();
    }

    ClientCallbacks callbacks_;
    kthost::Document& document_ = open(L"plan");
    std::unique_ptr<KtDxDocument> record_ = std::make_unique<KtDxDocument>(&document_);
};

TEST_F(DocumentRecord, StartsEnabledAndWithoutParts) {
    EXPECT_TRUE(record_->isEnabled());
    EXPECT_EQ(record_->document(), &document_);
    EXPECT_THAT(record_->enabledTimers(), IsEmpty());
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(DocumentRecord, GivesTheDrawingOfItsDocument) {
    EXPECT_EQ(record_->database(), document_.database());
    EXPECT_NE(record_->database(), nullptr);
}

TEST_F(DocumentRecord, HasNoDrawingWithoutADocument) {
    EXPECT_EQ(KtDxDocument(nullptr).database(), nullptr);
}

TEST_F(DocumentRecord, RefusesANullCallbackAndMakesNothing) {
    EXPECT_EQ(record_->attachTimerCallback(nullptr, 0, true), Orbx::eMissing);
    EXPECT_EQ(record_->attachTimerCallback(nullptr, 0, false), Orbx::eMissing);
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(DocumentRecord, FirstCallbackMakesTheTimerAndTheReactor) {
    EXPECT_EQ(attach(0, 250), Orbx::eOk);
    ASSERT_THAT(record_->enabledTimers(), SizeIs(1));
    const KtDxTimer* timer = *record_->enabledTimers().begin();
    EXPECT_EQ(timer->interval(), 250U);
    EXPECT_TRUE(timer->isRepeating());
    EXPECT_THAT(timer->listeners(), SizeIs(1));
}

TEST_F(DocumentRecord, LaterCallsOnlyChangeTheInterval) {
    std::ignore = attach(0, 250);
    KtDxTimer* timer = *record_->enabledTimers().begin();
    EXPECT_EQ(attach(1, 300), Orbx::eOk);
    EXPECT_THAT(record_->enabledTimers(), ElementsAre(timer));
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_THAT(timer->listeners(), SizeIs(1));
    EXPECT_EQ(timer->interval(), 300U);
    EXPECT_EQ(detach(1, 400), Orbx::eOk);
    EXPECT_EQ(timer->interval(), 400U);
}

TEST_F(DocumentRecord, TakesALaterIntervalThatIsNegativeAsASignedNumberAsZero) {
    std::ignore = attach(0, 250);
    std::ignore = attach(0, 0x8000'0000);
    EXPECT_EQ((*record_->enabledTimers().begin())->interval(), 0U);
}

TEST_F(DocumentRecord, MakesTheTimerAndTheReactorAlsoWhenDetachingWhatWasNeverAttached) {
    EXPECT_EQ(detach(0, 250), Orbx::eOk);
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_THAT(record_->enabledTimers(), IsEmpty());
    const FailingAllocation failing(1, sizeof(KtDxExternalClientTimerReactor));
    EXPECT_EQ(attach(0, 250), Orbx::eOk); // both are there already
    EXPECT_FALSE(failing.hasFailed());
    EXPECT_EQ(gTimerCount, 1U);
}

TEST_F(DocumentRecord, KeepsTheTimerWhenTheLastCallbackIsDetached) {
    std::ignore = attach(0);
    EXPECT_EQ(detach(0), Orbx::eOk);
    EXPECT_THAT(record_->enabledTimers(), IsEmpty());
    EXPECT_EQ(gTimerCount, 1U);
}

TEST_F(DocumentRecord, ReportsThatThereIsNoMemoryForTheTimer) {
    const FailingAllocation failing(1, sizeof(KtDxTimer));
    EXPECT_EQ(attach(0), Orbx::eMissing);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(DocumentRecord, ReportsThatThereIsNoMemoryForTheReactorAndKeepsTheTimer) {
    const FailingAllocation failing(1, sizeof(KtDxExternalClientTimerReactor));
    EXPECT_EQ(attach(0), Orbx::eMissing);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_EQ(gTimerCount, 1U);
}

TEST_F(DocumentRecord, PassesOnThatTheCallbackCouldNotBeAdded) {
    std::ignore = detach(0); // makes the parts
    const FailingAllocation failing;
    EXPECT_EQ(attach(0), Orbx::eMissing);
    EXPECT_TRUE(failing.hasFailed());
}

TEST_F(DocumentRecord, CallsItsCallbacksAtACheck) {
    std::ignore = attach(1);
    std::ignore = attach(0);
    EXPECT_THAT(callsAtCheck(), ElementsAre(0, 1));
}

TEST_F(DocumentRecord, DisablesItsPartsWithItself) {
    std::ignore = attach(0);
    EXPECT_EQ(record_->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(record_->isEnabled());
    EXPECT_THAT(record_->enabledTimers(), IsEmpty());
}

TEST_F(DocumentRecord, EnablesItsPartsWithItself) {
    std::ignore = attach(0);
    std::ignore = record_->setEnabled(false);
    EXPECT_EQ(record_->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(record_->isEnabled());
    EXPECT_THAT(callsAtCheck(), ElementsAre(0));
}

TEST_F(DocumentRecord, PassesTheStateOnEveryTime) {
    std::ignore = attach(0);
    KtDxTimer* timer = *record_->enabledTimers().begin();
    std::ignore = timer->setEnabled(false);
    std::ignore = record_->setEnabled(true);
    EXPECT_TRUE(timer->isEnabled());
}

TEST_F(DocumentRecord, EnablesTheReactorAlsoWithoutACallback) {
    std::ignore = detach(0); // makes the parts
    std::ignore = record_->setEnabled(true);
    ASSERT_THAT(record_->enabledTimers(), SizeIs(1));
    EXPECT_THAT((*record_->enabledTimers().begin())->listeners(), SizeIs(1));
}

TEST_F(DocumentRecord, SwitchesATimerThatHasNoReactor) {
    {
        const FailingAllocation failing(1, sizeof(KtDxExternalClientTimerReactor));
        ASSERT_EQ(attach(0), Orbx::eMissing);
    }
    std::ignore = record_->setEnabled(true);
    EXPECT_THAT(record_->enabledTimers(), SizeIs(1));
    std::ignore = record_->setEnabled(false);
    EXPECT_THAT(record_->enabledTimers(), IsEmpty());
}

TEST_F(DocumentRecord, IsSwitchedAlsoWhenAPartCannotFollow) {
    std::ignore = attach(0);
    std::ignore = record_->setEnabled(false);
    KtDxCmdLineHook* hook = std::exchange(gCmdLineHook, nullptr);
    EXPECT_EQ(record_->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(record_->isEnabled());
    gCmdLineHook = hook;
}

TEST_F(DocumentRecord, MakesItsBlockMonitorAtTheFirstRequestAndKeepsIt) {
    KtDxBlocks* blocks = record_->blocks();
    ASSERT_NE(blocks, nullptr);
    EXPECT_EQ(record_->blocks(), blocks);
}

TEST_F(DocumentRecord, HasNoBlockMonitorWhenItCannotBeMade) {
    EXPECT_EQ(KtDxDocument(nullptr).blocks(), nullptr);
}

TEST_F(DocumentRecord, TriesAgainToMakeABlockMonitorThatCouldNotBeMade) {
    {
        const FailingAllocation failing(1, sizeof(KtDxBlocks));
        EXPECT_EQ(record_->blocks(), nullptr);
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_NE(record_->blocks(), nullptr);
}

TEST_F(DocumentRecord, SwitchesItsBlockMonitorWithItself) {
    KtDxBlocks* blocks = record_->blocks();
    std::ignore = record_->setEnabled(true);
    EXPECT_TRUE(blocks->isEnabled());
    std::ignore = record_->setEnabled(false);
    EXPECT_FALSE(blocks->isEnabled());
}

TEST_F(DocumentRecord, ChecksTheTimerOfItsBlockMonitorToo) {
    std::ignore = record_->blocks();
    std::ignore = attach(0);
    std::ignore = record_->setEnabled(true);
    EXPECT_THAT(record_->enabledTimers(), SizeIs(2));
}

/// Writes down when it is checked.
class CheckedTimer : public KtDxTimer {
public:
    CheckedTimer(KtDxDocument* record, std::vector<KtDxTimer*>* checked)
        : KtDxTimer(record, 0),
          checked_(checked) {}

    void check() override { checked_->push_back(this); }

private:
    std::vector<KtDxTimer*>* checked_;
};

TEST_F(DocumentRecord, ChecksItsEnabledTimersInAscendingOrderOfAddress) {
    std::vector<KtDxTimer*> checked;
    std::array<CheckedTimer, 4> timers{{{record_.get(), &checked},
                                        {record_.get(), &checked},
                                        {record_.get(), &checked},
                                        {record_.get(), &checked}}};
    for (const std::size_t rank : {2U, 0U, 3U}) {
        std::ignore = timers.at(rank).setEnabled(true);
    }
    record_->checkTimers();
    EXPECT_THAT(checked, ElementsAre(&timers[0], &timers[2], &timers[3]));
}

TEST_F(DocumentRecord, PassesOverANullTimer) {
    std::ignore = attach(0);
    record_->enabledTimers().insert(nullptr);
    EXPECT_THAT(callsAtCheck(), ElementsAre(0));
    record_->enabledTimers().erase(nullptr);
}

TEST_F(DocumentRecord, TakesItsTimerAndTheHookWithIt) {
    std::ignore = attach(0);
    ASSERT_EQ(filterCount(), 1U);
    record_.reset();
    EXPECT_EQ(gTimerCount, 0U);
    EXPECT_EQ(gCmdLineHook, nullptr);
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(DocumentRecord, LeavesNoMemoryOfItsPartsBehind) {
    const auto makeAndDestroy = [this] {
        record_ = std::make_unique<KtDxDocument>(&document_);
        std::ignore = record_->blocks();
        std::ignore = attach(0);
        record_.reset();
    };
    makeAndDestroy(); // what others keep is there afterwards
    const std::size_t before = livingAllocations();
    makeAndDestroy();
    EXPECT_EQ(livingAllocations(), before);
}

TEST_F(DocumentRecord, LeavesTheHookToTheTimersOfOtherRecords) {
    kthost::Document& other = open(L"other");
    KtDxDocument otherRecord(&other);
    std::ignore = attach(0);
    std::ignore = otherRecord.attachTimerCallback(callbacks_.at(1), 0, true);
    record_.reset();
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_EQ(filterCount(), 1U);
    otherRecord.checkTimers();
    EXPECT_THAT(callbacks_.takeCalls(), ElementsAre(1));
}

TEST_F(DocumentRecord, TakesItsBlockMonitorWithIt) {
    ASSERT_NE(record_->blocks(), nullptr);
    std::ignore = record_->setEnabled(true);
    record_.reset();
    EXPECT_EQ(gTimerCount, 0U);
    EXPECT_TRUE(host_.end().clean());
}

} // namespace
