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
    std::string name; ///< FAMILY/WORKLOAD/SIZE/COLUMN/REPETITION; the repetition 0 counts allocations
    std::string family;
    std::string workload;
    std::string element;
    Setting setting;
    std::size_t passes = 1;
    std::function<void(benchmark::State&)> run;
};

/// The scene that is alive: asking for another ends it first, since a process has one host at a time.
class CurrentScene {
public:
    template <class Scene>
    Scene& get(std::size_t number, const Setting& setting) {
        if (scene_ == nullptr || number_ != number) {
            end();
            scene_ = std::make_shared<Scene>(setting);
            number_ = number;
        }
        return *static_cast<Scene*>(scene_.get());
    }

    void end() { scene_.reset(); }

private:
    std::shared_ptr<void> scene_;
    std::size_t number_ = 0;
};

/// What is measured, in the order in which it is measured: for each size the repetitions one after the other,
/// in each the columns one after the other, so that what slows the machine down for a while slows all columns
/// down.
class Plan {
public:
    template <class Scene>
    void add(const Family<Scene>& family);

    /// Hands all runs to the benchmark library, which performs them in their order.
    void enter();

    const PlannedRun& at(const std::string& name) const;

private:
    template <class Scene>
    void addScene(const Family<Scene>& family, const Setting& setting);

    std::vector<PlannedRun> runs_;
    CurrentScene scene_;
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
    const std::size_t number = ++scenes_;
    for (const Workload<Scene>& workload : family.workloads) {
        if (workload.isMeasured != nullptr && !workload.isMeasured(setting)) {
            continue;
        }
        PlannedRun run;
        run.name = family.name + '/' + workload.name + '/' + std::to_string(setting.size) + '/' +
                   nameOf(setting.column) + '/' + std::to_string(setting.repetition);
        run.family = family.name;
        run.workload = workload.name;
        run.element = workload.element;
        run.setting = setting;
        run.passes = workload.passes(setting.size);
        run.run = [this, number, setting, workload](benchmark::State& state) {
            Scene& scene = scene_.get<Scene>(number, setting);
            Round round(state, setting.repetition == 0);
            workload.run(round, scene);
            round.writeCounters();
            state.counters["elements"] = workload.elements(scene);
        };
        runs_.push_back(std::move(run));
    }
}

} // namespace bench
