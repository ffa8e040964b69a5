#include "bench/harness/Collector.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

double counter(const benchmark::BenchmarkReporter::Run& run, const char* name) {
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

} // namespace

bool Collector::ReportContext(const Context& /*context*/) {
    return true;
}

void Collector::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        take(run);
    }
}

void Collector::take(const Run& run) {
    const PlannedRun& planned = plan_.at(run.run_name.function_name);
    Figure& figure = figureOf(planned);
    figure.elements = counter(run, "elements");
    Measured& measured = figure.of(planned.setting.column);
    if (planned.setting.repetition == 0) {
        measured.allocations = counter(run, "allocations");
        measured.bytesKept = counter(run, "bytes");
        return;
    }
    constexpr double kNanoseconds = 1e9;
    const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations) * kNanoseconds;
    measured.samples.push_back(time);
    fmt::print(stderr, "{}: {:.0f} ns\n", planned.name, time);
}

Figure& Collector::figureOf(const PlannedRun& planned) {
    const auto found = std::find_if(figures_.begin(), figures_.end(), [&](const Figure& figure) {
        return figure.family == planned.family && figure.workload == planned.workload &&
               figure.size == planned.setting.size;
    });
    if (found != figures_.end()) {
        return *found;
    }
    Figure figure;
    figure.family = planned.family;
    figure.workload = planned.workload;
    figure.element = planned.element;
    figure.size = planned.setting.size;
    return figures_.emplace_back(std::move(figure));
}

} // namespace bench
