#pragma once

#include "tests/histories/Shrink.h"
#include "tests/histories/Tally.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace histories {

/// What one history showed.
struct Outcome {
    std::string failure; ///< empty when all was well: which check, a colon, what is wrong
    History history;     ///< the lines played, the one that failed last
    Tally tally;
};

/// Plays a history made up from that seed on a fresh host.
Outcome playRandom(std::uint32_t seed);

/// Plays these lines on a fresh host, up to the first behind which something is wrong.
Outcome play(const History& history);

/// As short a history as shows the same kind of fault.
History shrinkFault(const Outcome& outcome);

using Player = std::function<void(const History&)>;

/// True when playing these lines is more than a process survives. It is a process of its own; where the
/// system splits off none, false.
bool crashes(const History& history, const Player& player = play);

/// What to print of a history that crashes: a script, cut down, that shows it. What is said in the crash
/// itself goes to the error stream.
std::string describeCrash(const History& history, const Player& player = play);

/// What to print of an outcome that is a failure: the fault, and a script that shows it.
std::string describeFault(const Outcome& outcome, std::uint32_t seed);

} // namespace histories
