#include "kthost/window/HostClock.h"

#include "kthost/window/WindowCalls.h"

namespace kthost {

namespace {

HostClock* currentClock = nullptr;

} // namespace

HostClock::HostClock() {
    currentClock = this;
}

HostClock::~HostClock() {
    setAnswered(WindowCall::getTickCount, false);
    currentClock = nullptr;
}

HostClock* HostClock::current() {
    return currentClock;
}

DWORD HostClock::now() const {
    return standing_ ? ticks_ : machineTicks() + ticks_;
}

void HostClock::set(DWORD ticks) {
    standing_ = true;
    ticks_ = ticks;
    setAnswered(WindowCall::getTickCount, true);
}

void HostClock::advance(DWORD milliseconds) {
    ticks_ += milliseconds;
    setAnswered(WindowCall::getTickCount, true);
}

void HostClock::useMachine() {
    standing_ = false;
    ticks_ = 0;
    setAnswered(WindowCall::getTickCount, false);
}

} // namespace kthost
