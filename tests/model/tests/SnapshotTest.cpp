#include "tests/model/Snapshot.h"

#include "tests/model/Facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ktmodel;
using testing::HasSubstr;

namespace {

constexpr KtDbObjectId kBlock(0x10010);
constexpr KtDbObjectId kContainer(0x10020);
constexpr KtDbObjectId kReference(0x10030);

/// A drawing with one of everything.
Snapshot oneOfEach() {
    MonitorSnapshot monitor;
    monitor.recordIds = {kBlock};
    monitor.references[kContainer] = {kReference};
    monitor.attributes[kReference] = {KtDbObjectId(0x10040)};
    monitor.callbacks = {2};
    BlocksSnapshot blocks;
    blocks.monitors[kBlock] = monitor;
    blocks.monitorOfKey[kBlock] = kBlock;
    blocks.timer = TimerSnapshot();
    blocks.answers[{kBlock, kContainer}] = {};
    Snapshot snapshot;
    snapshot.documents[L"plan"].blocks = blocks;
    snapshot.documents[L"plan"].idleClients = IdleClientsSnapshot();
    snapshot.reactors[kBlock] = {kBlock};
    return snapshot;
}

MonitorSnapshot& monitorIn(Snapshot& snapshot) {
    return snapshot.documents[L"plan"].blocks->monitors[kBlock];
}

TEST(Snapshot, HasNoDifferenceFromItself) {
    EXPECT_EQ(difference(oneOfEach(), oneOfEach()), "");
}

TEST(Snapshot, SaysWhichMarkDiffers) {
    Snapshot changed = oneOfEach();
    monitorIn(changed).changed = true;
    EXPECT_EQ(difference(changed, oneOfEach()), "plan: blocks: #65552(0): changed: expected yes, is no\n");
}

TEST(Snapshot, SaysThatAContainerIsNotThere) {
    Snapshot less = oneOfEach();
    monitorIn(less).references.clear();
    EXPECT_THAT(difference(oneOfEach(), less),
                HasSubstr("references in #65568(0): expected #65584(0), is not there"));
}

TEST(Snapshot, SaysThatAContainerIsThereThatShouldNotBe) {
    Snapshot less = oneOfEach();
    monitorIn(less).references.clear();
    EXPECT_THAT(difference(less, oneOfEach()),
                HasSubstr("references in #65568(0): expected not there, is #65584(0)"));
}

TEST(Snapshot, TellsAReactorThatIsThereTwice) {
    Snapshot twice = oneOfEach();
    twice.reactors[kBlock].insert(kBlock);
    EXPECT_THAT(difference(oneOfEach(), twice), HasSubstr("reactors on #65552(0)"));
}

TEST(Snapshot, TellsTheOrderOfCallbacks) {
    Snapshot forward = oneOfEach();
    Snapshot backward = oneOfEach();
    forward.calls = {1, 2};
    backward.calls = {2, 1};
    EXPECT_EQ(difference(forward, backward), "callbacks called: expected 1, 2, is 2, 1\n");
}

TEST(Snapshot, CountsTheDifferencesThatItDoesNotTell) {
    Snapshot other = oneOfEach();
    monitorIn(other).changed = true;
    monitorIn(other).enabled = true;
    other.timerCount = 7;
    EXPECT_THAT(difference(oneOfEach(), other, 1), HasSubstr("and 2 more differences"));
}

TEST(Snapshot, NeverKeepsADifferenceToItself) {
    Snapshot emptySet = oneOfEach();
    emptySet.reactors[kContainer];
    EXPECT_NE(difference(oneOfEach(), emptySet), "");
}

TEST(Snapshot, SaysEveryFactInItsText) {
    EXPECT_THAT(textOf(oneOfEach()),
                HasSubstr("plan: blocks: #65552(0): attributes of #65584(0): #65600(0)\n"));
}

} // namespace
