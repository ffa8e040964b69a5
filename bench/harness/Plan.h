#pragma once

#include "bench/harness/Column.h"
#include "bench/harness/Family.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// One benchmark: one workload, size, column and repetition.
struct PlannedRun {
    std::size_t scene = 0; ///< runs on the same scene have the same number, from 1 on
    std::string name;      ///< FAMILY/WORKLOAD/SIZE/COLUMN/REPETITION; the repetition 0 counts allocations
    std::string family;
    std::string workload;
    std::string element;
    Setting setting;
    std::size_t passes = 1;
    std::function<void(benchmark::State&)> run;
};

/// What is measured, in the order in which it is measured: for each size the repetitions one after the other,
/// in each the columns one after the other, so that what slows the machine down for a while slows all columns
/// down. Each scene has a process of its own: what others have left of the heap would make a difference.
class Plan {
public:
    template <class Scene>
    void add(const Family<Scene>& family);

    /// Hands the runs on one scene whose names match to the benchmark library, which performs them in their
    /// order.
    void enter(std::size_t scene, const std::string& pattern) const;
    /// Those with runs whose names match, in order.
    std::vector<std::size_t> scenesMatching(const std::string& pattern) const;

    const PlannedRun& at(const std::string& name) const;

private:
    template <class Scene>
    void addScene(const Family<Scene>& family, const Setting& setting);

    std::vector<PlannedRun> runs_;
    std::size_t scenes_ = 0;
};

template <class Scene>
void Plan::add(const Family<Scene>& family) {
    for (const std::size_t size : family.sizes) {
        for (std::size_t repetition = 0; repetition <= family.repetitions; ++repetition) {
            for (const Column column : kColumns) {
                addScene(family, {column, size, repetition});
            }
        }
    }
}

template <class Scene>
void Plan::addScene(const Family<Scene>& family, const Setting& setting) {
    ++scenes_;
    const auto scene = std::make_shared<std::unique_ptr<Scene>>(); // made when the first run needs it
    for (const Workload<Scene>& workload : family.workloads) {
        if (workload.isMeasured != nullptr && !workload.isMeasured(setting)) {
            continue;
        }
        PlannedRun run;
        run.scene = scenes_;
        run.name = family.name + '/' + workload.name + '/' + std::to_string(setting.size) + '/' +
                   nameOf(setting.column) + '/' + std::to_string(setting.repetition);
        run.family = family.name;
        run.workload = workload.name;
        run.element = workload.element;
        run.setting = setting;
        run.passes = workload.passes(setting.size);
        run.run = [scene, setting, workload](benchmark::State& state) {
            if (*scene == nullptr) {
                *scene = std::make_unique<Scene>(setting);
            }
            Round round(state, setting.repetition == 0);
            workload.run(round, **scene);
            round.writeCounters();
            state.counters["elements"] = workload.elements(**scene);
        };
        runs_.push_back(std::move(run));
    }
}

} // namespace bench
