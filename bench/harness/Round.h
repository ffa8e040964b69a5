#pragma once

#include "bench/harness/Allocations.h"

#include <benchmark/benchmark.h>

namespace bench {

/// The loop of one measurement: `while (round.next()) { what is measured }`. A counting round counts
/// allocations instead of being timed; the reporter takes no time from it.
class Round {
public:
    Round(benchmark::State& state, bool counting) : state_(state), counting_(counting) {}

    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;

    bool next();
    /// Around preparations inside the loop.
    void pause();
    void resume();

    /// Averages of one pass of the loop.
    void writeCounters();

private:
    void count(bool on) const { countAllocations(on && counting_); }

    benchmark::State& state_;
    bool counting_;
    Allocations before_ = allocationsCounted();
};

/// Around preparations inside a round's loop.
class Paused {
public:
    explicit Paused(Round& round) : round_(round) { round_.pause(); }

    Paused(const Paused&) = delete;
    Paused& operator=(const Paused&) = delete;

    ~Paused() { round_.resume(); }

private:
    Round& round_;
};

} // namespace bench
