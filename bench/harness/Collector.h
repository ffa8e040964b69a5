#pragma once

#include "bench/harness/Figures.h"
#include "bench/harness/Plan.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace bench {

/// Takes the benchmark library's runs together to figures, and tells the standard error output how far it is.
class Collector final : public benchmark::BenchmarkReporter {
public:
    /// The plan has to outlive this.
    explicit Collector(const Plan& plan) : plan_(plan) {}

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    const Figures& figures() const { return figures_; }

private:
    void take(const Run& run);
    Figure& figureOf(const PlannedRun& planned);

    const Plan& plan_;
    Figures figures_;
};

} // namespace bench
