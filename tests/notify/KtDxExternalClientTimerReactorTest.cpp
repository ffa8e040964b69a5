#include "notify/KtDxExternalClientTimerReactor.h"

#include "app/KtDxDocument.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxTimer.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <memory>
#include <tuple>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClientTimerReactor : public ModuleTest {
protected:
    bool isWithTimer() { return timer_.listeners().contains(reactor_.get()); }

    ClientCallbacks callbacks_;
    KtDxDocument record_{nullptr};
    KtDxTimer timer_{&record_, 0};
    std::unique_ptr<KtDxExternalClientTimerReactor> reactor_ =
        std::make_unique<KtDxExternalClientTimerReactor>(&timer_);
};

TEST_F(ClientTimerReactor, StartsDisabledWithoutCallbacksAndAwayFromTheTimer) {
    EXPECT_FALSE(reactor_->isEnabled());
    EXPECT_THAT(reactor_->listeners(), IsEmpty());
    EXPECT_FALSE(isWithTimer());
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, RefusesANullCallbackAndStaysDisabled) {
    EXPECT_EQ(reactor_->add(nullptr), Orbx::eMissing);
    EXPECT_FALSE(reactor_->isEnabled());
}

TEST_F(ClientTimerReactor, FirstCallbackEnablesItAndTheTimer) {
    EXPECT_EQ(reactor_->add(callbacks_.at(0)), Orbx::eOk);
    EXPECT_TRUE(reactor_->isEnabled());
    EXPECT_TRUE(isWithTimer());
    EXPECT_TRUE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, FurtherCallbacksLeaveTheTimerAlone) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = timer_.setEnabled(false);
    EXPECT_EQ(reactor_->add(callbacks_.at(1)), Orbx::eOk);
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, KnownCallbackEnablesItAgain) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = reactor_->setEnabled(false);
    EXPECT_EQ(reactor_->add(callbacks_.at(0)), Orbx::eOk);
    EXPECT_TRUE(reactor_->isEnabled());
}

TEST_F(ClientTimerReactor, LastCallbackToGoDisablesItAndTheTimer) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = reactor_->add(callbacks_.at(1));
    reactor_->remove(callbacks_.at(0));
    EXPECT_TRUE(reactor_->isEnabled());
    reactor_->remove(callbacks_.at(1));
    EXPECT_FALSE(reactor_->isEnabled());
    EXPECT_FALSE(isWithTimer());
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, RemovingAStrangerWhenNoneIsLeftDisablesIt) {
    std::ignore = reactor_->setEnabled(true);
    EXPECT_EQ(reactor_->remove(callbacks_.at(0)), 0U);
    EXPECT_FALSE(reactor_->isEnabled());
}

TEST_F(ClientTimerReactor, RemovingFromADisabledOneLeavesTheTimerAlone) {
    std::ignore = timer_.setEnabled(true);
    reactor_->remove(callbacks_.at(0));
    EXPECT_TRUE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, AddedTwiceAndRemovedOnceIsOut) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = reactor_->add(callbacks_.at(0));
    EXPECT_EQ(reactor_->remove(callbacks_.at(0)), 1U);
    EXPECT_THAT(reactor_->listeners(), IsEmpty());
}

TEST_F(ClientTimerReactor, JoinsTheTimerOnlyWhenItWasDisabled) {
    std::ignore = reactor_->setEnabled(true);
    timer_.remove(reactor_.get());
    EXPECT_EQ(reactor_->setEnabled(true), Orbx::eOk);
    EXPECT_FALSE(isWithTimer());
}

TEST_F(ClientTimerReactor, LeavesTheTimerAlsoWhenItWasDisabled) {
    std::ignore = timer_.add(reactor_.get());
    EXPECT_EQ(reactor_->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(isWithTimer());
}

TEST_F(ClientTimerReactor, PassesTheStateOnToTheTimerEveryTime) {
    std::ignore = reactor_->setEnabled(true);
    std::ignore = timer_.setEnabled(false);
    std::ignore = reactor_->setEnabled(true);
    EXPECT_TRUE(timer_.isEnabled());
    std::ignore = reactor_->setEnabled(false);
    std::ignore = timer_.setEnabled(true);
    std::ignore = reactor_->setEnabled(false);
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, IsEnabledAllTheSameWithATimerThatCannotBe) {
    KtDxCmdLineHook* hook = std::exchange(gCmdLineHook, nullptr);
    EXPECT_EQ(reactor_->setEnabled(true), Orbx::eOk);
    gCmdLineHook = hook;
    EXPECT_TRUE(reactor_->isEnabled());
    EXPECT_TRUE(isWithTimer());
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, CannotBeSwitchedWithoutATimer) {
    KtDxExternalClientTimerReactor reactor(nullptr);
    EXPECT_EQ(reactor.setEnabled(true), Orbx::eMissing);
    EXPECT_FALSE(reactor.isEnabled());
    EXPECT_EQ(reactor.setEnabled(false), Orbx::eMissing);
}

TEST_F(ClientTimerReactor, PassesOnThatItsFirstCallbackCouldNotEnableIt) {
    KtDxExternalClientTimerReactor reactor(nullptr);
    EXPECT_EQ(reactor.add(callbacks_.at(0)), Orbx::eMissing);
    EXPECT_THAT(reactor.listeners(), ElementsAre(callbacks_.at(0)));
}

TEST_F(ClientTimerReactor, ReportsThatThereIsNoMemoryForACallback) {
    const FailingAllocation failing;
    EXPECT_EQ(reactor_->add(callbacks_.at(0)), Orbx::eMissing);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_FALSE(reactor_->isEnabled());
}

TEST_F(ClientTimerReactor, ReportsThatThereIsNoMemoryToJoinTheTimer) {
    const FailingAllocation failing;
    EXPECT_EQ(reactor_->setEnabled(true), Orbx::eMissing);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_FALSE(reactor_->isEnabled());
}

TEST_F(ClientTimerReactor, CallsItsCallbacksInAscendingOrderOfAddress) {
    for (const std::size_t rank : {3U, 0U, 4U, 1U, 2U}) {
        std::ignore = reactor_->add(callbacks_.at(rank));
    }
    reactor_->timerElapsed();
    EXPECT_THAT(callbacks_.takeCalls(), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(ClientTimerReactor, CallsNobodyWhileDisabled) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = reactor_->setEnabled(false);
    reactor_->timerElapsed();
    EXPECT_THAT(callbacks_.takeCalls(), IsEmpty());
}

TEST_F(ClientTimerReactor, FinishesARoundInWhichItIsDisabled) {
    std::ignore = reactor_->add(callbacks_.at(0));
    std::ignore = reactor_->add(callbacks_.at(1));
    callbacks_.onCall(0, [this] { std::ignore = reactor_->setEnabled(false); });
    reactor_->timerElapsed();
    EXPECT_THAT(callbacks_.takeCalls(), ElementsAre(0, 1));
}

TEST_F(ClientTimerReactor, IsCalledWhenItsTimerFires) {
    std::ignore = reactor_->add(callbacks_.at(2));
    timer_.check();
    EXPECT_THAT(callbacks_.takeCalls(), ElementsAre(2));
}

TEST_F(ClientTimerReactor, LeavesAndDisablesTheTimerWhenItIsDestroyed) {
    std::ignore = reactor_->add(callbacks_.at(0));
    reactor_.reset();
    EXPECT_THAT(timer_.listeners(), IsEmpty());
    EXPECT_FALSE(timer_.isEnabled());
}

TEST_F(ClientTimerReactor, IsDestroyedWithoutATimer) {
    EXPECT_NO_THROW(std::make_unique<KtDxExternalClientTimerReactor>(nullptr).reset());
}

TEST_F(ClientTimerReactor, SwitchesItselfThroughTheVirtualTable) {
    class Watched : public KtDxExternalClientTimerReactor {
    public:
        using KtDxExternalClientTimerReactor::KtDxExternalClientTimerReactor;

        Orbx::ErrorStatus setEnabled(bool enable) override {
            ++(enable ? enabled : disabled);
            return KtDxExternalClientTimerReactor::setEnabled(enable);
        }

        int enabled = 0;
        int disabled = 0;
    };

    Watched reactor(&timer_);
    std::ignore = reactor.add(callbacks_.at(0));
    EXPECT_EQ(reactor.enabled, 1);
    reactor.remove(callbacks_.at(0));
    EXPECT_EQ(reactor.disabled, 1);
}

} // namespace
