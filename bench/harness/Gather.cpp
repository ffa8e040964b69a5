#include "bench/harness/Gather.h"

#include <algorithm>
#include <utility>

namespace bench {

namespace {

Figure& figureOf(const PlannedRun& planned, Figures& figures) {
    const auto found = std::find_if(figures.begin(), figures.end(), [&](const Figure& figure) {
        return figure.family == planned.family && figure.workload == planned.workload &&
               figure.size == planned.setting.size;
    });
    if (found != figures.end()) {
        return *found;
    }
    Figure figure;
    figure.family = planned.family;
    figure.workload = planned.workload;
    figure.element = planned.element;
    figure.size = planned.setting.size;
    return figures.emplace_back(std::move(figure));
}

} // namespace

void gather(const Plan& plan, const Sample& sample, Figures& figures) {
    const PlannedRun& planned = plan.at(sample.name);
    Figure& figure = figureOf(planned, figures);
    figure.elements = sample.elements;
    Measured& measured = figure.of(planned.setting.column);
    if (planned.setting.repetition == 0) {
        measured.isCounted = true;
        measured.allocations = sample.allocations;
        measured.bytesKept = sample.bytesKept;
    } else {
        measured.samples.push_back(sample.time);
    }
}

} // namespace bench
