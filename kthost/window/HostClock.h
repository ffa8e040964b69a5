#pragma once

#include <WindowSystem.h>

namespace kthost {

/// The tick counter: the machine's, or one that stands where it is put. One at a time in a process; without
/// one, ticks are the machine's.
class HostClock {
public:
    HostClock();
    HostClock(const HostClock&) = delete;
    HostClock& operator=(const HostClock&) = delete;
    ~HostClock();

    static HostClock* current();

    /// Milliseconds of a clock that never goes back; wraps around after about 49.7 days.
    static DWORD machineTicks();

    DWORD now() const;
    /// From now on the counter stands at `ticks` and moves by `advance` only.
    void set(DWORD ticks);
    /// The counter jumps ahead, whether it stands or follows the machine.
    void advance(DWORD milliseconds);
    /// From now on the counter follows the machine's, as at the start.
    void useMachine();

private:
    bool standing_ = false;
    DWORD ticks_ = 0; // where it stands, or how far it is ahead of the machine
};

} // namespace kthost
