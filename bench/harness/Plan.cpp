#include "bench/harness/Plan.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

void Plan::enter() {
    for (const PlannedRun& run : runs_) {
        const auto passes = static_cast<benchmark::IterationCount>(run.passes);
        benchmark::RegisterBenchmark(run.name.c_str(), run.run)->Iterations(passes);
    }
}

const PlannedRun& Plan::at(const std::string& name) const {
    const auto found =
        std::find_if(runs_.begin(), runs_.end(), [&](const PlannedRun& run) { return run.name == name; });
    if (found == runs_.end()) {
        throw std::out_of_range("no such benchmark: " + name);
    }
    return *found;
}

} // namespace bench
