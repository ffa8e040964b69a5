#include "kthost/window/HostClock.h"

namespace kthost {

DWORD HostClock::machineTicks() {
    return GetTickCount();
}

} // namespace kthost
