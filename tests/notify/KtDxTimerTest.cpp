#include "notify/KtDxTimer.h"

#include "app/KtDxDocument.h"
#include "notify/KtDxCmdLineHook.h"
#include "tests/notify/TimerReactors.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using kthost::HostCall;
using testing::ElementsAre;
using testing::IsEmpty;

/// A record without a document, which timers do not ask for; the clock stands.
class Timer : public ModuleTest {
protected:
    Timer() { host_.clock().set(1'000'000); }

    std::unique_ptr<KtDxTimer> make(std::uint32_t interval) {
        return std::make_unique<KtDxTimer>(&record_, interval);
    }

    std::unique_ptr<KtDxTimer> makeEnabled(std::uint32_t interval) {
        auto timer = make(interval);
        EXPECT_EQ(timer->setEnabled(true), Orbx::eOk);
        EXPECT_EQ(timer->add(reactors_.at(0)), Orbx::eOk);
        return timer;
    }

    bool firesAtCheck(KtDxTimer& timer) {
        reactors_.takeCalls();
        timer.check();
        return !reactors_.takeCalls().empty();
    }

    bool isInSet(KtDxTimer& timer) { return record_.enabledTimers().contains(&timer); }

    KtDxDocument record_{nullptr};
    TimerReactors reactors_;
};

TEST_F(Timer, StartsDisabledRepeatingAndOutsideTheSet) {
    const auto timer = make(100);
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_TRUE(timer->isRepeating());
    EXPECT_FALSE(isInSet(*timer));
    EXPECT_THAT(timer->listeners(), IsEmpty());
}

TEST_F(Timer, TakesTheIntervalOfItsConstructionAsItIs) {
    EXPECT_EQ(make(250)->interval(), 250U);
    EXPECT_EQ(make(static_cast<std::uint32_t>(-5))->interval(), 4'294'967'291U);
}

TEST_F(Timer, StoresANegativeIntervalAsZero) {
    const auto timer = make(250);
    EXPECT_EQ(timer->setInterval(-5), 0U);
    EXPECT_EQ(timer->interval(), 0U);
}

TEST_F(Timer, StoresAnIntervalAndReturnsIt) {
    const auto timer = make(250);
    EXPECT_EQ(timer->setInterval(2'147'483'647), 2'147'483'647U);
    EXPECT_EQ(timer->interval(), 2'147'483'647U);
}

TEST_F(Timer, FiresAtEveryCheckWithIntervalZero) {
    const auto timer = makeEnabled(0);
    EXPECT_TRUE(firesAtCheck(*timer));
    EXPECT_TRUE(firesAtCheck(*timer));
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, FiresWhenExactlyTheIntervalHasElapsed) {
    const auto timer = makeEnabled(500);
    timer->restart();
    host_.clock().advance(500);
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, DoesNotFireOneMillisecondBeforeTheInterval) {
    const auto timer = makeEnabled(500);
    timer->restart();
    host_.clock().advance(499);
    EXPECT_FALSE(firesAtCheck(*timer));
}

TEST_F(Timer, MeasuresAcrossTheWrapAroundOfTheTickCounter) {
    const auto timer = makeEnabled(0x200);
    host_.clock().set(0xFFFF'FF00);
    timer->restart();
    host_.clock().set(0xFF);
    EXPECT_FALSE(firesAtCheck(*timer));
    host_.clock().set(0x100);
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, MeasuresItsFirstIntervalFromTickZero) {
    host_.clock().set(1'000);
    EXPECT_TRUE(firesAtCheck(*makeEnabled(1'000)));
    EXPECT_FALSE(firesAtCheck(*makeEnabled(1'001)));
}

TEST_F(Timer, MeasuresTheNextIntervalFromItsFiring) {
    const auto timer = makeEnabled(500);
    ASSERT_TRUE(firesAtCheck(*timer));
    host_.clock().advance(499);
    EXPECT_FALSE(firesAtCheck(*timer));
    host_.clock().advance(1);
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, MeasuresFromTheEndOfItsFiring) {
    const auto timer = makeEnabled(500);
    reactors_.onCall(0, [this] { host_.clock().advance(300); });
    ASSERT_TRUE(firesAtCheck(*timer));
    host_.clock().advance(499);
    EXPECT_FALSE(firesAtCheck(*timer));
}

TEST_F(Timer, IsNotRestartedByBeingEnabled) {
    const auto timer = makeEnabled(500);
    timer->restart();
    host_.clock().advance(300);
    std::ignore = timer->setEnabled(false);
    std::ignore = timer->setEnabled(true);
    host_.clock().advance(200);
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, RestartsAtThePresentTickAndReturnsIt) {
    const auto timer = make(0);
    host_.clock().set(4'711);
    EXPECT_EQ(timer->restart(), 4'711U);
}

TEST_F(Timer, DoesNotFireWhileDisabled) {
    const auto timer = makeEnabled(0);
    std::ignore = timer->setEnabled(false);
    EXPECT_FALSE(firesAtCheck(*timer));
}

TEST_F(Timer, FiresOnceAndLeavesTheSetWhenItDoesNotRepeat) {
    const auto timer = makeEnabled(0);
    timer->setRepeating(false);
    EXPECT_TRUE(firesAtCheck(*timer));
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_FALSE(isInSet(*timer));
    EXPECT_FALSE(firesAtCheck(*timer));
}

TEST_F(Timer, RepeatsAgainWhenToldSo) {
    const auto timer = makeEnabled(0);
    timer->setRepeating(false);
    timer->setRepeating(true);
    EXPECT_TRUE(firesAtCheck(*timer));
    EXPECT_TRUE(firesAtCheck(*timer));
}

TEST_F(Timer, JoinsTheSetOfItsDocumentWhenEnabled) {
    const auto timer = make(0);
    EXPECT_EQ(timer->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(timer->isEnabled());
    EXPECT_TRUE(isInSet(*timer));
}

TEST_F(Timer, LeavesTheSetOfItsDocumentWhenDisabled) {
    const auto timer = makeEnabled(0);
    EXPECT_EQ(timer->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_FALSE(isInSet(*timer));
}

TEST_F(Timer, EnablesTheHookWhenEnabled) {
    const auto timer = make(0);
    ASSERT_FALSE(gCmdLineHook->isEnabled());
    std::ignore = timer->setEnabled(true);
    EXPECT_TRUE(gCmdLineHook->isEnabled());
}

TEST_F(Timer, NeverDisablesTheHook) {
    const auto timer = makeEnabled(0);
    std::ignore = timer->setEnabled(false);
    EXPECT_TRUE(gCmdLineHook->isEnabled());
    EXPECT_EQ(filterCount(), 1U);
}

TEST_F(Timer, EnabledAgainEnablesTheHookAgain) {
    const auto timer = makeEnabled(0);
    ASSERT_EQ(gCmdLineHook->setEnabled(false), Orbx::eOk);
    EXPECT_EQ(timer->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(gCmdLineHook->isEnabled());
}

TEST_F(Timer, EnabledAgainLeavesTheSetAlone) {
    const auto timer = makeEnabled(0);
    record_.enabledTimers().clear();
    EXPECT_EQ(timer->setEnabled(true), Orbx::eOk);
    EXPECT_THAT(record_.enabledTimers(), IsEmpty());
}

TEST_F(Timer, DisabledAgainLeavesTheSetAlone) {
    const auto timer = make(0);
    record_.enabledTimers().insert(timer.get());
    EXPECT_EQ(timer->setEnabled(false), Orbx::eOk);
    EXPECT_TRUE(isInSet(*timer));
    record_.enabledTimers().clear();
}

TEST_F(Timer, IsEnabledAllTheSameWhenTheHostRefusesTheFilter) {
    faults().fail(HostCall::registerFilter, 1, Orbx::eInvalidInput);
    const auto timer = make(0);
    EXPECT_EQ(timer->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(timer->isEnabled());
    EXPECT_FALSE(gCmdLineHook->isEnabled());
}

TEST_F(Timer, AsksForARefusedFilterAgainWhenEnabledAgain) {
    faults().fail(HostCall::registerFilter, 1, Orbx::eInvalidInput);
    const auto timer = makeEnabled(0);
    std::ignore = timer->setEnabled(true);
    EXPECT_EQ(filterCount(), 1U);
}

TEST_F(Timer, CannotBeEnabledWithoutAHookAndThenChangesNothing) {
    const auto timer = make(0);
    KtDxCmdLineHook* hook = std::exchange(gCmdLineHook, nullptr);
    EXPECT_EQ(timer->setEnabled(true), Orbx::eMissing);
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_FALSE(isInSet(*timer));
    gCmdLineHook = hook;
}

TEST_F(Timer, LooksForTheHookBeforeItsOwnState) {
    const auto timer = makeEnabled(0);
    KtDxCmdLineHook* hook = std::exchange(gCmdLineHook, nullptr);
    EXPECT_EQ(timer->setEnabled(true), Orbx::eMissing);
    EXPECT_TRUE(timer->isEnabled());
    gCmdLineHook = hook;
}

TEST_F(Timer, CanBeDisabledWithoutAHook) {
    const auto timer = makeEnabled(0);
    KtDxCmdLineHook* hook = std::exchange(gCmdLineHook, nullptr);
    EXPECT_EQ(timer->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(isInSet(*timer));
    gCmdLineHook = hook;
}

TEST_F(Timer, CannotBeEnabledWithoutADocument) {
    KtDxTimer timer(nullptr, 0);
    EXPECT_EQ(timer.setEnabled(true), Orbx::eMissing);
    EXPECT_FALSE(timer.isEnabled());
}

TEST_F(Timer, EnablesTheHookBeforeItLooksForItsDocument) {
    KtDxTimer timer(nullptr, 0);
    std::ignore = timer.setEnabled(true);
    EXPECT_TRUE(gCmdLineHook->isEnabled());
}

TEST_F(Timer, ComparesItsStateBeforeItLooksForItsDocument) {
    KtDxTimer timer(nullptr, 0);
    EXPECT_EQ(timer.setEnabled(false), Orbx::eOk);
}

TEST_F(Timer, StaysDisabledWhenThereIsNoMemoryForItsPlaceInTheSet) {
    const auto timer = make(0);
    std::ignore = gCmdLineHook->setEnabled(true); // the host's own allocations are done with
    {
        const FailingAllocation failing;
        EXPECT_EQ(timer->setEnabled(true), Orbx::eMissing);
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_FALSE(isInSet(*timer));
}

TEST_F(Timer, CountsTheTimersAlive) {
    const auto first = make(0);
    EXPECT_EQ(gTimerCount, 1U);
    auto second = make(0);
    EXPECT_EQ(gTimerCount, 2U);
    second.reset();
    EXPECT_EQ(gTimerCount, 1U);
}

TEST_F(Timer, FirstOneMakesTheHookDisabled) {
    const auto timer = make(0);
    ASSERT_NE(gCmdLineHook, nullptr);
    EXPECT_FALSE(gCmdLineHook->isEnabled());
}

TEST_F(Timer, SecondOneSharesTheHook) {
    const auto first = make(0);
    const KtDxCmdLineHook* hook = gCmdLineHook;
    const auto second = make(0);
    EXPECT_EQ(gCmdLineHook, hook);
}

TEST_F(Timer, HookStaysWhileATimerIsLeft) {
    auto first = make(0);
    const auto second = make(0);
    const KtDxCmdLineHook* hook = gCmdLineHook;
    first.reset();
    EXPECT_EQ(gCmdLineHook, hook);
}

TEST_F(Timer, LastOneToGoDeletesTheHookAndWithItTheFilter) {
    auto timer = makeEnabled(0);
    ASSERT_EQ(filterCount(), 1U);
    timer.reset();
    EXPECT_EQ(gCmdLineHook, nullptr);
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(Timer, MadeAfterTheLastHasGoneMakesANewHook) {
    makeEnabled(0).reset();
    const auto timer = makeEnabled(0);
    ASSERT_NE(gCmdLineHook, nullptr);
    EXPECT_EQ(filterCount(), 1U);
}

TEST_F(Timer, IsMadeWithoutAHookWhenThereIsNoMemoryForIt) {
    const FailingAllocation failing(1, sizeof(KtDxCmdLineHook));
    const KtDxTimer timer(&record_, 0);
    ASSERT_TRUE(failing.hasFailed());
    EXPECT_EQ(gTimerCount, 1U);
    EXPECT_EQ(gCmdLineHook, nullptr);
}

TEST_F(Timer, DoesNotMakeTheHookThatTheFirstOneCouldNotGet) {
    const FailingAllocation failing(1, sizeof(KtDxCmdLineHook));
    const KtDxTimer first(&record_, 0);
    KtDxTimer second(&record_, 0);
    EXPECT_EQ(gCmdLineHook, nullptr);
    EXPECT_EQ(second.setEnabled(true), Orbx::eMissing);
}

TEST_F(Timer, LeavesTheSetWhenItIsDestroyedEnabled) {
    makeEnabled(0).reset();
    EXPECT_THAT(record_.enabledTimers(), IsEmpty());
}

TEST_F(Timer, IsDestroyedWithoutADocument) {
    auto timer = std::make_unique<KtDxTimer>(nullptr, 0U);
    timer.reset();
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(Timer, IsDestroyedWithoutADocumentThoughItsFlagIsSet) {
    auto timer = std::make_unique<KtDxTimer>(nullptr, 0U);
    std::ignore = timer->KtDxEnableBase::setEnabled(true);
    timer.reset();
    EXPECT_EQ(gTimerCount, 0U);
}

TEST_F(Timer, LastOneDeletesTheHookBeforeItLeavesTheSet) {
    struct WatchingHook : KtDxCmdLineHook {
        explicit WatchingHook(std::function<void()> theWatch) : watch(std::move(theWatch)) {}

        WatchingHook(const WatchingHook&) = delete;
        WatchingHook& operator=(const WatchingHook&) = delete;

        ~WatchingHook() override { watch(); }

        std::function<void()> watch;
    };

    auto timer = makeEnabled(0);
    std::size_t timersInSet = 0;
    delete std::exchange(gCmdLineHook,
                         new WatchingHook([&] { timersInSet = record_.enabledTimers().size(); }));
    timer.reset();
    EXPECT_EQ(timersInSet, 1U);
}

TEST_F(Timer, NotifiesEveryReactorInAscendingOrderOfAddress) {
    const auto timer = make(0);
    for (const std::size_t rank : {3U, 0U, 4U, 1U, 2U}) {
        std::ignore = timer->add(reactors_.at(rank));
    }
    timer->notify();
    EXPECT_THAT(reactors_.takeCalls(), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(Timer, StaysDisabledWhenAReactorDisablesIt) {
    const auto timer = makeEnabled(0);
    reactors_.onCall(0, [&timer] { std::ignore = timer->setEnabled(false); });
    EXPECT_TRUE(firesAtCheck(*timer));
    EXPECT_FALSE(timer->isEnabled());
    EXPECT_FALSE(isInSet(*timer));
}

/// Writes down which of its operations are called, in order.
class WatchedTimer : public KtDxTimer {
public:
    using KtDxTimer::KtDxTimer;

    bool isEnabled() const override {
        calls.emplace_back("isEnabled");
        return KtDxTimer::isEnabled();
    }

    Orbx::ErrorStatus setEnabled(bool enable) override {
        calls.emplace_back(enable ? "enable" : "disable");
        return KtDxTimer::setEnabled(enable);
    }

    void notify() override { calls.emplace_back("notify"); }

    std::uint32_t restart() override {
        calls.emplace_back("restart");
        return 0;
    }

    bool isRepeating() const override {
        calls.emplace_back("isRepeating");
        return KtDxTimer::isRepeating();
    }

    mutable std::vector<std::string> calls;
};

TEST_F(Timer, RepeatingNotifiesAndThenRestartsThroughItsOwnOperations) {
    WatchedTimer timer(&record_, 0);
    std::ignore = timer.setEnabled(true);
    timer.calls.clear();
    timer.check();
    EXPECT_THAT(timer.calls, ElementsAre("isEnabled", "notify", "isRepeating", "restart"));
}

TEST_F(Timer, NotRepeatingNotifiesAndThenDisablesItselfThroughItsOwnOperations) {
    WatchedTimer timer(&record_, 0);
    std::ignore = timer.setEnabled(true);
    timer.setRepeating(false);
    timer.calls.clear();
    timer.check();
    EXPECT_THAT(timer.calls, ElementsAre("isEnabled", "notify", "isRepeating", "disable", "isEnabled"));
}

} // namespace
