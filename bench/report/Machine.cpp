#include "bench/report/Machine.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace bench {

std::string machineText() {
    const benchmark::CPUInfo& processors = benchmark::CPUInfo::Get();
    constexpr double kGigahertz = 1e9;
    std::string text = fmt::format("{} processors of {:.1f} GHz", processors.num_cpus,
                                   processors.cycles_per_second / kGigahertz);
    for (const benchmark::CPUInfo::CacheInfo& cache : processors.caches) {
        constexpr int kKibibyte = 1024;
        text += fmt::format(", level {} {} cache {} KiB", cache.level, cache.type, cache.size / kKibibyte);
    }
    return text;
}

} // namespace bench
