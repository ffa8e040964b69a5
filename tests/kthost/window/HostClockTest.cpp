#include "kthost/window/HostClock.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

TEST(Clock, StandsWhereItIsSet) {
    HostClock clock;
    clock.set(1000);
    EXPECT_EQ(GetTickCount(), 1000U);
    EXPECT_EQ(GetTickCount(), 1000U);
}

TEST(Clock, MovesByWhatItIsAdvanced) {
    HostClock clock;
    clock.set(1000);
    clock.advance(250);
    EXPECT_EQ(GetTickCount(), 1250U);
}

TEST(Clock, WrapsAround) {
    HostClock clock;
    clock.set(0xFFFFFFF0);
    clock.advance(0x20);
    EXPECT_EQ(GetTickCount(), 0x10U);
}

TEST(Clock, IsAheadOfTheMachineByWhatItIsAdvanced) {
    HostClock clock;
    const DWORD before = HostClock::machineTicks();
    clock.advance(3600000);
    EXPECT_GE(GetTickCount() - before, 3600000U);
}

TEST(Clock, FollowsTheMachineAgainWhenToldTo) {
    HostClock clock;
    clock.set(5);
    clock.advance(7);
    clock.useMachine();
    const DWORD before = HostClock::machineTicks();
    const DWORD now = GetTickCount();
    EXPECT_LE(now - before, HostClock::machineTicks() - before);
}

TEST(Clock, IsTheMachinesWithoutOneOfTheHost) {
    const DWORD before = HostClock::machineTicks();
    const DWORD now = GetTickCount();
    EXPECT_LE(now - before, HostClock::machineTicks() - before);
}

} // namespace
} // namespace kthost
