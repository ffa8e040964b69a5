#include "kthost/database/ReactorOrigins.h"
#include "kthost/database/ReactorSlot.h"
#include "kthost/runtime/CodeOrigin.h"

#include <KtDbObjectReactor.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

namespace kthost {

namespace {

class Watcher : public KtDbObjectReactor {};

class ReactorOrigins : public testing::Test {
protected:
    Watcher first, second, third;
    const void* table = virtualTableOf(&first);
};

TEST_F(ReactorOrigins, TellOfAReactorThatIsGone) {
    ReactorSlot slot;
    std::optional<Watcher> watcher(std::in_place);
    const KtDbObjectReactor* gone = &*watcher;
    slot.add(&*watcher);
    watcher.reset();
    EXPECT_EQ(notedVirtualTable(gone), table);
}

TEST_F(ReactorOrigins, TellOfEveryReactorOfAnObject) {
    ReactorSlot slot;
    for (Watcher* watcher : {&first, &second, &third}) {
        slot.add(watcher);
    }
    for (const Watcher* watcher : {&first, &second, &third}) {
        EXPECT_EQ(notedVirtualTable(watcher), table);
    }
}

TEST_F(ReactorOrigins, StayWhileTheReactorIsOnAnotherObject) {
    ReactorSlot one;
    ReactorSlot other;
    one.add(&first);
    other.add(&first);
    one.remove(&first);
    EXPECT_EQ(notedVirtualTable(&first), table);
}

TEST_F(ReactorOrigins, StayWhenAReactorIsAddedTwiceUntilItIsRemoved) {
    ReactorSlot slot;
    slot.add(&first);
    slot.add(&first);
    slot.remove(&first);
    EXPECT_EQ(notedVirtualTable(&first), nullptr);
}

TEST_F(ReactorOrigins, AreForgottenWhenAReactorOfManyIsRemoved) {
    ReactorSlot slot;
    for (Watcher* watcher : {&first, &second, &third}) {
        slot.add(watcher);
    }
    slot.remove(&second);
    EXPECT_EQ(notedVirtualTable(&second), nullptr);
}

TEST_F(ReactorOrigins, AreForgottenWithTheObjectOfOneReactor) {
    auto slot = std::make_unique<ReactorSlot>();
    slot->add(&first);
    slot.reset();
    EXPECT_EQ(notedVirtualTable(&first), nullptr);
}

TEST_F(ReactorOrigins, AreForgottenWithTheObjectOfSeveralReactors) {
    auto slot = std::make_unique<ReactorSlot>();
    slot->add(&first);
    slot->add(&second);
    slot.reset();
    EXPECT_EQ(notedVirtualTable(&first), nullptr);
    EXPECT_EQ(notedVirtualTable(&second), nullptr);
}

} // namespace

} // namespace kthost
