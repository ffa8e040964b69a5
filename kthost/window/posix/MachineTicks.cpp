#include "kthost/window/HostClock.h"

#include <chrono>

namespace kthost {

DWORD HostClock::machineTicks() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

} // namespace kthost
