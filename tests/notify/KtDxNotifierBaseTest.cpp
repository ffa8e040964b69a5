#include "notify/KtDxNotifierBase.h"

#include <KtRxCallback.h>

#include "notify/KtDxTimerReactor.h"
#include "tests/notify/TimerReactors.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

struct CallbackListeners {
    using Listener = KtRxCallback;
    ClientCallbacks source;
};

struct ReactorListeners {
    using Listener = KtDxTimerReactor*;
    TimerReactors source;
};

template <typename Listeners>
class NotifierBase : public testing::Test {
protected:
    using Listener = typename Listeners::Listener;

    Listener at(std::size_t rank) { return listeners_.source.at(rank); }

    std::vector<Listener> held() const {
        return {notifier_.listeners().begin(), notifier_.listeners().end()};
    }

    Listeners listeners_;
    KtDxNotifierBase<Listener> notifier_;
};

using BothKinds = testing::Types<CallbackListeners, ReactorListeners>;
TYPED_TEST_SUITE(NotifierBase, BothKinds);

TYPED_TEST(NotifierBase, IsOffAndEmptyAtConstruction) {
    EXPECT_FALSE(this->notifier_.isEnabled());
    EXPECT_TRUE(this->notifier_.listeners().empty());
}

TYPED_TEST(NotifierBase, RefusesANullListenerAndChangesNothing) {
    std::ignore = this->notifier_.add(this->at(0));
    EXPECT_EQ(this->notifier_.add(nullptr), Orbx::eMissing);
    EXPECT_EQ(this->held(), std::vector({this->at(0)}));
}

TYPED_TEST(NotifierBase, AddsAListenerWithStatusOk) {
    EXPECT_EQ(this->notifier_.add(this->at(0)), Orbx::eOk);
    EXPECT_EQ(this->held(), std::vector({this->at(0)}));
}

TYPED_TEST(NotifierBase, TakesAListenerThatIsThereAlreadyWithStatusOk) {
    std::ignore = this->notifier_.add(this->at(0));
    EXPECT_EQ(this->notifier_.add(this->at(0)), Orbx::eOk);
    EXPECT_EQ(this->held(), std::vector({this->at(0)}));
}

TYPED_TEST(NotifierBase, AddedTwiceAndRemovedOnceIsOut) {
    std::ignore = this->notifier_.add(this->at(0));
    std::ignore = this->notifier_.add(this->at(0));
    EXPECT_EQ(this->notifier_.remove(this->at(0)), 1U);
    EXPECT_TRUE(this->notifier_.listeners().empty());
}

TYPED_TEST(NotifierBase, RemovingAStrangerGivesZeroAndChangesNothing) {
    std::ignore = this->notifier_.add(this->at(0));
    EXPECT_EQ(this->notifier_.remove(this->at(1)), 0U);
    EXPECT_EQ(this->held(), std::vector({this->at(0)}));
}

TYPED_TEST(NotifierBase, KeepsListenersInAscendingOrderOfAddress) {
    for (const std::size_t rank : {3U, 0U, 4U, 1U, 2U}) {
        std::ignore = this->notifier_.add(this->at(rank));
    }
    EXPECT_EQ(this->held(), std::vector({this->at(0), this->at(1), this->at(2), this->at(3), this->at(4)}));
}

TYPED_TEST(NotifierBase, ChangesItsListWhetherItIsOnOrOff) {
    std::ignore = this->notifier_.setEnabled(true);
    EXPECT_EQ(this->notifier_.add(this->at(0)), Orbx::eOk);
    std::ignore = this->notifier_.setEnabled(false);
    EXPECT_EQ(this->notifier_.remove(this->at(0)), 1U);
}

TYPED_TEST(NotifierBase, ChangingTheListLeavesTheSwitchAlone) {
    std::ignore = this->notifier_.add(this->at(0));
    EXPECT_FALSE(this->notifier_.isEnabled());
    std::ignore = this->notifier_.setEnabled(true);
    this->notifier_.remove(this->at(0));
    EXPECT_TRUE(this->notifier_.isEnabled());
}

TYPED_TEST(NotifierBase, ReportsThatThereIsNoMemoryForAListener) {
    {
        const FailingAllocation failing;
        EXPECT_EQ(this->notifier_.add(this->at(0)), Orbx::eMissing);
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_TRUE(this->notifier_.listeners().empty());
}

} // namespace
