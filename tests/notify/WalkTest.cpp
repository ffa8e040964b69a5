// What the callee of a walk may do to the collection under it. All three walks of the framework are put
// through the same; they differ only in when they settle which element comes next.

#include "app/KtDxDocument.h"
#include "notify/KtDxExternalClientTimerReactor.h"
#include "notify/KtDxTimer.h"
#include "tests/notify/TimerReactors.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;

/// The client callbacks of a document: the next one is settled after the call.
class CallbackWalk {
public:
    static constexpr bool kSettlesNextFirst = false;

    void add(std::size_t rank) { std::ignore = reactor_.add(callbacks_.at(rank)); }

    void remove(std::size_t rank) { reactor_.remove(callbacks_.at(rank)); }

    void onCall(std::size_t rank, std::function<void()> action) {
        callbacks_.onCall(rank, std::move(action));
    }

    std::vector<std::size_t> walk() {
        reactor_.timerElapsed();
        return callbacks_.takeCalls();
    }

private:
    ClientCallbacks callbacks_;
    KtDxDocument record_{nullptr};
    KtDxTimer timer_{&record_, 0};
    KtDxExternalClientTimerReactor reactor_{&timer_};
};

/// The reactors of a timer: the next one is settled before the call.
class ReactorWalk {
public:
    static constexpr bool kSettlesNextFirst = true;

    void add(std::size_t rank) { std::ignore = timer_.add(reactors_.at(rank)); }

    void remove(std::size_t rank) { timer_.remove(reactors_.at(rank)); }

    void onCall(std::size_t rank, std::function<void()> action) { reactors_.onCall(rank, std::move(action)); }

    std::vector<std::size_t> walk() {
        timer_.notify();
        return reactors_.takeCalls();
    }

private:
    TimerReactors reactors_;
    KtDxDocument record_{nullptr};
    KtDxTimer timer_{&record_, 0};
};

/// The enabled timers of a document: the next one is settled before the check.
class TimerWalk {
public:
    static constexpr bool kSettlesNextFirst = true;

    TimerWalk() {
        for (std::size_t rank = 0; rank < timers_.size(); ++rank) {
            timers_[rank].emplace(&record_, 0U);
            std::ignore = timers_[rank]->add(reactors_.at(rank));
        }
    }

    void add(std::size_t rank) { std::ignore = timers_.at(rank)->setEnabled(true); }

    void remove(std::size_t rank) { std::ignore = timers_.at(rank)->setEnabled(false); }

    void destroy(std::size_t rank) { timers_.at(rank).reset(); }

    void onCall(std::size_t rank, std::function<void()> action) { reactors_.onCall(rank, std::move(action)); }

    std::vector<std::size_t> walk() {
        record_.checkTimers();
        return reactors_.takeCalls();
    }

private:
    TimerReactors reactors_;
    KtDxDocument record_{nullptr};
    std::array<std::optional<KtDxTimer>, TimerReactors::kCount> timers_; // in ascending order of address
};

template <typename Walk>
class EveryWalk : public ModuleTest {
protected:
    void hold(std::initializer_list<std::size_t> ranks) {
        for (const std::size_t rank : ranks) {
            walk_.add(rank);
        }
    }

    Walk walk_;
};

using AllWalks = testing::Types<CallbackWalk, ReactorWalk, TimerWalk>;
TYPED_TEST_SUITE(EveryWalk, AllWalks);

TYPED_TEST(EveryWalk, CallsEachOnce) {
    this->hold({4, 1, 0, 3, 2});
    EXPECT_THAT(this->walk_.walk(), ElementsAre(0, 1, 2, 3, 4));
}

TYPED_TEST(EveryWalk, OverNothingCallsNobody) {
    EXPECT_THAT(this->walk_.walk(), ElementsAre());
}

TYPED_TEST(EveryWalk, GoesOnBehindOneThatRemovesItself) {
    this->hold({1, 2, 3});
    this->walk_.onCall(2, [this] { this->walk_.remove(2); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 3));
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 3));
}

TYPED_TEST(EveryWalk, EndsBehindALastOneThatRemovesItself) {
    this->hold({1, 2});
    this->walk_.onCall(2, [this] { this->walk_.remove(2); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2));
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1));
}

TYPED_TEST(EveryWalk, ReplacesARemovedNextByTheOneAfterIt) {
    this->hold({1, 2, 3});
    this->walk_.onCall(1, [this] { this->walk_.remove(2); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 3));
}

TYPED_TEST(EveryWalk, EndsWhenTheRemovedNextWasTheLast) {
    this->hold({1, 2});
    this->walk_.onCall(1, [this] { this->walk_.remove(2); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1));
}

TYPED_TEST(EveryWalk, SurvivesTheRemovalOfTheCurrentAndTheNextTwo) {
    this->hold({0, 1, 2, 3, 4});
    this->walk_.onCall(1, [this] {
        this->walk_.remove(1);
        this->walk_.remove(2);
        this->walk_.remove(3);
    });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(0, 1, 4));
}

TYPED_TEST(EveryWalk, IsNotDisturbedByTheRemovalOfOneThatWasCalled) {
    this->hold({1, 2, 3});
    this->walk_.onCall(2, [this] { this->walk_.remove(1); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 3));
}

TYPED_TEST(EveryWalk, EndsWhenAllAreRemoved) {
    this->hold({1, 2, 3});
    this->walk_.onCall(1, [this] {
        this->walk_.remove(1);
        this->walk_.remove(2);
        this->walk_.remove(3);
    });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1));
    EXPECT_THAT(this->walk_.walk(), ElementsAre());
}

TYPED_TEST(EveryWalk, DoesNotGoBackToOneAddedBefore) {
    this->hold({1, 2});
    this->walk_.onCall(1, [this] { this->walk_.add(0); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2));
    EXPECT_THAT(this->walk_.walk(), ElementsAre(0, 1, 2));
}

TYPED_TEST(EveryWalk, ReachesOneAddedBehindTheNext) {
    this->hold({1, 2});
    this->walk_.onCall(1, [this] { this->walk_.add(4); });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 4));
}

TYPED_TEST(EveryWalk, ReachesOneAddedBeforeTheNextOnlyIfThatIsSettledAfterTheCall) {
    this->hold({1, 3});
    this->walk_.onCall(1, [this] { this->walk_.add(2); });
    const std::vector<std::size_t> calls = this->walk_.walk();
    EXPECT_EQ(calls, TypeParam::kSettlesNextFirst ? std::vector<std::size_t>({1, 3})
                                                  : std::vector<std::size_t>({1, 2, 3}));
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 3));
}

TYPED_TEST(EveryWalk, ReachesOneAddedAtTheEndByTheLastOnlyIfTheNextIsSettledAfterTheCall) {
    this->hold({1, 2});
    this->walk_.onCall(2, [this] { this->walk_.add(3); });
    const std::vector<std::size_t> calls = this->walk_.walk();
    EXPECT_EQ(calls, TypeParam::kSettlesNextFirst ? std::vector<std::size_t>({1, 2})
                                                  : std::vector<std::size_t>({1, 2, 3}));
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 3));
}

TYPED_TEST(EveryWalk, ReplacesARemovedNextByOneAddedBehindIt) {
    this->hold({1, 2});
    this->walk_.onCall(1, [this] {
        this->walk_.remove(2);
        this->walk_.add(3);
    });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 3));
}

TYPED_TEST(EveryWalk, DoesNotCallAgainOneThatRemovesAndAddsItself) {
    this->hold({1, 2});
    this->walk_.onCall(1, [this] {
        this->walk_.remove(1);
        this->walk_.add(1);
    });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2));
}

TYPED_TEST(EveryWalk, CallsTheNextThatWasRemovedAndAddedAgain) {
    this->hold({1, 2, 3});
    this->walk_.onCall(1, [this] {
        this->walk_.remove(2);
        this->walk_.add(2);
    });
    EXPECT_THAT(this->walk_.walk(), ElementsAre(1, 2, 3));
}

class TimersOfADocument : public ModuleTest {
protected:
    TimerWalk walk_;
};

TEST_F(TimersOfADocument, SurviveTheDestructionOfTheNext) {
    walk_.add(1);
    walk_.add(2);
    walk_.add(3);
    walk_.onCall(1, [this] { walk_.destroy(2); });
    EXPECT_THAT(walk_.walk(), ElementsAre(1, 3));
}

TEST_F(TimersOfADocument, SurviveTheDestructionOfAllOthers) {
    walk_.add(0);
    walk_.add(1);
    walk_.add(2);
    walk_.onCall(1, [this] {
        walk_.destroy(0);
        walk_.destroy(2);
    });
    EXPECT_THAT(walk_.walk(), ElementsAre(0, 1));
}

class ReactorsOfATimer : public ModuleTest {
protected:
    TimerReactors reactors_;
    KtDxDocument record_{nullptr};
    KtDxTimer timer_{&record_, 0};
};

TEST_F(ReactorsOfATimer, AreAllCalledWhenOneDisablesTheTimer) {
    std::ignore = timer_.add(reactors_.at(0));
    std::ignore = timer_.add(reactors_.at(1));
    std::ignore = timer_.setEnabled(true);
    reactors_.onCall(0, [this] { std::ignore = timer_.setEnabled(false); });
    timer_.check();
    EXPECT_THAT(reactors_.takeCalls(), ElementsAre(0, 1));
}

} // namespace
