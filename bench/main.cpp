#include "bench/drawings/RealDrawings.h"
#include "bench/harness/Collector.h"
#include "bench/harness/Plan.h"
#include "bench/report/Report.h"
#include "bench/workloads/Workloads.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <string>

/// ktdx_bench [--quick] [--filter REGEX] [--json FILE] [--drawings FOLDER]: measures the module beside the
/// plain way and beside what the host alone costs, and prints the figures.
namespace {

struct Wishes {
    bool quick = false;
    std::string filter;
    std::string json;
    std::string drawings;
};

bench::Figures measure(const Wishes& wishes) {
    if (!wishes.drawings.empty()) {
        bench::findRealDrawings(wishes.drawings);
    }
    bench::Plan plan;
    bench::planAll(plan, wishes.quick ? bench::Scale::quick : bench::Scale::full);
    plan.enter();
    bench::Collector collector(plan);
    benchmark::RunSpecifiedBenchmarks(&collector, wishes.filter.empty() ? "." : wishes.filter);
    return collector.figures();
}

int run(const Wishes& wishes) {
    const bench::Figures figures = measure(wishes);
    std::cout << bench::textOf(figures);
    if (!wishes.json.empty()) {
        std::ofstream file(wishes.json);
        file << bench::jsonOf(figures);
        if (!file.flush()) {
            std::cerr << "bench: " << wishes.json << " cannot be written\n";
            return 1;
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    Wishes wishes;
    CLI::App app("Measures the module beside the plain way and beside what the host alone costs.");
    app.add_flag("--quick", wishes.quick, "small drawings, few repetitions");
    app.add_option("--filter", wishes.filter, "only FAMILY/WORKLOAD/SIZE/COLUMN/REPETITION that match this");
    app.add_option("--json", wishes.json, "where to write the figures");
    app.add_option("--drawings", wishes.drawings, "folder with real drawings to keep parts lists of");
    try {
        app.parse(argc, argv);
        return run(wishes);
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    } catch (const std::exception& error) {
        std::cerr << "bench: " << error.what() << '\n';
        return 1;
    }
}
