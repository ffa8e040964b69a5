#pragma once

#include "bench/harness/Column.h"
#include "bench/harness/Round.h"

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// One row of figures for each size: what is done to a scene while the clock runs.
template <class Scene>
struct Workload {
    std::string name;
    std::string element; ///< what its time is divided by, in the singular
    /// Its loop: `while (round.next()) { ... }`.
    void (*run)(Round& round, Scene& scene) = nullptr;
    /// How often the loop runs in one repetition: more often where one pass is too short for the clock.
    std::size_t (*passes)(std::size_t size) = nullptr;
    /// How many elements one pass works on.
    double (*elements)(const Scene& scene) = nullptr;
    /// Where it is measured; everywhere when null.
    bool (*isMeasured)(const Setting& setting) = nullptr;
};

/// Workloads that are measured one after the other on the same scene, for each size and column. A Scene is
/// made from a Setting and holds a host, a drawing and whoever does the work; what a workload does to it, it
/// takes back, or leaves so that the next finds as many elements. One scene is alive at a time. The last
/// workload may be left out by a filter, the first too: none relies on another having run.
template <class Scene>
struct Family {
    std::string name;
    std::vector<std::size_t> sizes;
    std::size_t repetitions = 0; ///< those timed; one more, before them, counts allocations
    std::vector<Workload<Scene>> workloads;
};

/// Passes for work of which a million elements go through in about a second.
inline std::size_t passesFor(std::size_t size) {
    constexpr std::size_t kElementsEach = 50'000;
    return size >= kElementsEach ? 1 : kElementsEach / (size == 0 ? 1 : size);
}

inline std::size_t onePass(std::size_t /*size*/) {
    return 1;
}

} // namespace bench
