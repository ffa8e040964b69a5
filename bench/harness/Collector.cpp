#include "bench/harness/Collector.h"

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
    constexpr double kNanoseconds = 1e9;
    for (const Run& run : runs) {
        const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations) * kNanoseconds;
        samples_.push_back({run.run_name.function_name, time, counter(run, "allocations"),
                            counter(run, "bytes"), counter(run, "elements")});
    }
}

} // namespace bench
