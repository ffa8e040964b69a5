#include "bench/harness/Plan.h"

#include <algorithm>
#include <regex>
#include <stdexcept>

namespace bench {

void Plan::enter(std::size_t scene, const std::string& pattern) const {
    const std::regex expression(pattern);
    for (const PlannedRun& run : runs_) {
        if (run.scene == scene && std::regex_search(run.name, expression)) {
            const auto passes = static_cast<benchmark::IterationCount>(run.passes);
            benchmark::RegisterBenchmark(run.name.c_str(), run.run)->Iterations(passes);
        }
    }
}

std::vector<std::size_t> Plan::scenesMatching(const std::string& pattern) const {
    const std::regex expression(pattern);
    std::vector<std::size_t> scenes;
    for (const PlannedRun& run : runs_) {
        const bool isNew = scenes.empty() || scenes.back() != run.scene;
        if (isNew && std::regex_search(run.name, expression)) {
            scenes.push_back(run.scene);
        }
    }
    return scenes;
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
