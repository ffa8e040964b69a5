#include "kthost/database/Attribute.h"
#include "kthost/database/ReactorSlot.h"
#include "tests/kthost/database/DrawingTest.h"

namespace kthost {

namespace {

using Reactor = DrawingTest;

/// Makes every watched object speak once to each reactor: an unchanged object that is closed.
void speak(KtDbObjectId id) {
    KtDbObject* object = nullptr;
    ASSERT_EQ(ktdbOpenObject(object, id, KtDbObject::desc(), KtDb::kForWrite), Orbx::eOk);
    ASSERT_EQ(object->close(), Orbx::eOk);
}

TEST_F(Reactor, IsHeldOnceHoweverOftenItIsAdded) {
    EventLog log;
    watch(resistor, log);
    watch(resistor, log);
    EventLog other;
    watch(resistor, other);
    watch(resistor, other);
    speak(resistor);
    EXPECT_EQ(log.events.size(), 1U);
    EXPECT_EQ(other.events.size(), 1U);
}

TEST_F(Reactor, IsRefusedWhenTheObjectIsNotOpen) {
    EventLog log;
    KtDbObject* object = open(resistor, KtDb::kForRead);
    close(object);
    EXPECT_EQ(object->addReactor(&log), Orbx::eNotOpen);
    EXPECT_EQ(object->removeReactor(&log), Orbx::eNotOpen);
}

TEST_F(Reactor, IsTakenInAnyModeOfOpening) {
    EventLog log;
    for (const KtDb::OpenMode mode : {KtDb::kForRead, KtDb::kForWrite, KtDb::kForNotify}) {
        KtDbObject* object = open(resistor, mode);
        EXPECT_EQ(object->addReactor(&log), Orbx::eOk);
        EXPECT_EQ(object->removeReactor(&log), Orbx::eOk);
        close(object);
    }
}

TEST_F(Reactor, IsRefusedOnAnObjectWithoutAnId) {
    EventLog log;
    const Attribute attribute(L"Value", L"4k7");
    EXPECT_EQ(attribute.addReactor(&log), Orbx::eNotInDatabase);
}

TEST_F(Reactor, IsRefusedWhenItIsNull) {
    EXPECT_EQ(open(resistor, KtDb::kForNotify)->addReactor(nullptr), Orbx::eInvalidInput);
}

TEST_F(Reactor, ThatIsNotThereCannotBeRemoved) {
    EventLog log;
    EventLog other;
    KtDbObject* object = open(resistor, KtDb::kForNotify);
    EXPECT_EQ(object->removeReactor(&log), Orbx::eKeyNotFound);
    ASSERT_EQ(object->addReactor(&other), Orbx::eOk);
    EXPECT_EQ(object->removeReactor(&log), Orbx::eKeyNotFound);
    EventLog third;
    ASSERT_EQ(object->addReactor(&third), Orbx::eOk);
    EXPECT_EQ(object->removeReactor(&log), Orbx::eKeyNotFound);
}

TEST_F(Reactor, FailsAsTheFaultSwitchesSay) {
    EventLog log;
    KtDbObject* object = open(resistor, KtDb::kForNotify);
    Faults::instance().fail(HostCall::addReactor, 1, Orbx::eNotNow);
    Faults::instance().fail(HostCall::removeReactor, 1, Orbx::eMissing);
    EXPECT_EQ(object->addReactor(&log), Orbx::eNotNow);
    EXPECT_EQ(object->removeReactor(&log), Orbx::eMissing);
}

/// Several logs on one object that write into one list, by letter.
class ReactorRound : public DrawingTest {
protected:
    ReactorRound() {
        for (std::size_t i = 0; i < logs.size(); ++i) {
            logs[i].hook = [this, i](const std::string&) {
                called += static_cast<char>('a' + i);
                if (actions[i]) {
                    actions[i]();
                }
            };
        }
    }

    void watchFirst(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            watch(resistor, logs[i]);
        }
    }

    std::string round() {
        called.clear();
        speak(resistor);
        return called;
    }

    std::array<EventLog, 4> logs;
    std::array<std::function<void()>, 4> actions;
    std::string called;
};

TEST_F(ReactorRound, GoesInTheOrderOfAdding) {
    watchFirst(4);
    EXPECT_EQ(round(), "abcd");
}

TEST_F(ReactorRound, GoesOnWhenOneRemovesItself) {
    watchFirst(3);
    actions[1] = [this] { unwatch(resistor, logs[1]); };
    EXPECT_EQ(round(), "abc");
    EXPECT_EQ(round(), "ac");
}

TEST_F(ReactorRound, LeavesOutOneThatWasRemovedBeforeItsTurn) {
    watchFirst(3);
    actions[0] = [this] {
        unwatch(resistor, logs[1]);
        actions[0] = nullptr;
    };
    EXPECT_EQ(round(), "ac");
    EXPECT_EQ(round(), "ac");
}

TEST_F(ReactorRound, StopsWhenOneRemovesAll) {
    watchFirst(4);
    actions[1] = [this] {
        for (EventLog& log : logs) {
            unwatch(resistor, log);
        }
    };
    EXPECT_EQ(round(), "ab");
    EXPECT_EQ(round(), "");
}

TEST_F(ReactorRound, LeavesTheAddedOneForTheNextRound) {
    watchFirst(1);
    actions[0] = [this] { watch(resistor, logs[1]); };
    EXPECT_EQ(round(), "a");
    EXPECT_EQ(round(), "ab");
}

TEST_F(ReactorRound, LeavesTheAddedOneForTheNextRoundAmongMany) {
    watchFirst(3);
    actions[1] = [this] { watch(resistor, logs[3]); };
    EXPECT_EQ(round(), "abc");
    EXPECT_EQ(round(), "abcd");
}

TEST_F(ReactorRound, LeavesOneThatWasRemovedAndAddedForTheNextRound) {
    watchFirst(3);
    actions[0] = [this] {
        unwatch(resistor, logs[1]);
        watch(resistor, logs[1]);
    };
    EXPECT_EQ(round(), "ac");
}

TEST_F(ReactorRound, SurvivesRoundsInsideRounds) {
    watchFirst(3);
    actions[0] = [this] {
        actions[0] = nullptr;
        actions[1] = [this] {
            unwatch(resistor, logs[2]);
            actions[1] = nullptr;
        };
        speak(resistor);
    };
    EXPECT_EQ(round(), "aabb");
    EXPECT_EQ(round(), "ab");
}

TEST_F(ReactorRound, TellsAnAuditWhoWatchesWhat) {
    watchFirst(2);
    const std::vector<AttachedReactor> found = attachedReactors();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].id, resistor);
    EXPECT_EQ(found[0].className, L"KtDbBlockTableRecord");
    EXPECT_EQ(found[0].handle, handleOf(resistor));
    EXPECT_EQ(found[0].reactor, &logs[0]);
    EXPECT_EQ(found[1].reactor, &logs[1]);
}

TEST(ReactorSlot, EndsARoundQuietlyWhenItIsDestroyedInside) {
    std::array<EventLog, 3> logs;
    auto slot = std::make_unique<ReactorSlot>();
    for (EventLog& log : logs) {
        slot->add(&log);
    }
    int calls = 0;
    slot->forEach([&](KtDbObjectReactor*) {
        ++calls;
        slot.reset();
    });
    EXPECT_EQ(calls, 1);
}

TEST(ReactorSlot, ForgetsItsListWhenOneReactorIsLeft) {
    std::array<EventLog, 3> logs;
    ReactorSlot slot;
    for (EventLog& log : logs) {
        slot.add(&log);
    }
    EXPECT_TRUE(slot.remove(&logs[0]));
    EXPECT_TRUE(slot.remove(&logs[2]));
    EXPECT_EQ(slot.reactors(), std::vector<KtDbObjectReactor*>({&logs[1]}));
    EXPECT_TRUE(slot.remove(&logs[1]));
    EXPECT_TRUE(slot.isEmpty());
}

} // namespace

} // namespace kthost
