#include "kthost/window/HostClock.h"

#include <chrono>

namespace kthost {

namespace {

HostClock* currentClock = nullptr;

} // namespace

HostClock::HostClock() {
    currentClock = this;
}

HostClock::~HostClock() {
    currentClock = nullptr;
}

HostClock* HostClock::current() {
    return currentClock;
}

DWORD HostClock::machineTicks() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

DWORD HostClock::now() const {
    return standing_ ? ticks_ : machineTicks() + ticks_;
}

void HostClock::set(DWORD ticks) {
    standing_ = true;
    ticks_ = ticks;
}

void HostClock::advance(DWORD milliseconds) {
    ticks_ += milliseconds;
}

void HostClock::useMachine() {
    standing_ = false;
    ticks_ = 0;
}

} // namespace kthost
