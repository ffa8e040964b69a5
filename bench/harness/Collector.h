#pragma once

#include "bench/harness/Sample.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace bench {

/// Takes the benchmark library's runs as samples.
class Collector final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    const std::vector<Sample>& samples() const { return samples_; }

private:
    std::vector<Sample> samples_;
};

} // namespace bench
