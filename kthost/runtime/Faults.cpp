#include "kthost/runtime/Faults.h"

namespace kthost {

Faults Faults::instance_;

void Faults::fail(HostCall call, std::uint64_t k, Orbx::ErrorStatus status, bool andAllAfter) {
    Switch& fault = switches_[static_cast<std::size_t>(call)];
    fault.first = fault.calls + k;
    fault.status = status;
    fault.andAllAfter = andAllAfter;
}

void Faults::reset() {
    switches_ = {};
}

} // namespace kthost
