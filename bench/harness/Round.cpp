#include "bench/harness/Round.h"

namespace bench {

bool Round::next() {
    const bool goesOn = state_.KeepRunning();
    count(goesOn);
    return goesOn;
}

void Round::pause() {
    count(false);
    state_.PauseTiming();
}

void Round::resume() {
    state_.ResumeTiming();
    count(true);
}

void Round::writeCounters() {
    if (!counting_) {
        return;
    }
    const Allocations& after = allocationsCounted();
    const auto passes = static_cast<double>(state_.iterations());
    state_.counters["allocations"] = static_cast<double>(after.count - before_.count) / passes;
    state_.counters["bytes"] = static_cast<double>(after.bytesKept - before_.bytesKept) / passes;
}

} // namespace bench
