#pragma once

#include "kthost/runtime/Faults.h"
#include "tests/faults/Histories.h"
#include "tests/faults/ObservedState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class FaultPhase : std::uint8_t {
    play,  ///< from the module's loading to the end of the history
    unload ///< while the module is unloaded
};

/// What goes wrong in a run.
struct Fault {
    FaultPhase phase = FaultPhase::play;
    std::optional<kthost::HostCall> call; ///< nothing: an allocation of the module's
    std::size_t k = 0;                    ///< the k-th; 0 for none
    bool andAllAfter = false;

    std::string text() const;
};

const char* nameOf(kthost::HostCall call);

/// What came of one history.
struct RunResult {
    std::vector<std::size_t> calls; ///< of each kind, in the fault's phase
    std::size_t allocations = 0;
    std::string escaped;      ///< exceptions
    std::size_t leftOpen = 0; ///< objects, when the history had ended
    bool initialised = false;
    std::size_t boxes = 0; ///< messages shown
    bool updated = false;  ///< by one forced update, with nothing failing any more
    ObservedState afterUpdate;
    ObservedState attachedAnew;
    std::string calledAfterwards; ///< clients
    std::vector<std::string> leftovers;
};

/// Plays a history in a host of its own. Behind the fault the module is made up to date, its clients attach
/// anew, everything is touched once more, and the module is unloaded.
RunResult run(const History& history, const Fault& fault);
