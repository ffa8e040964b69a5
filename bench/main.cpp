#include "bench/drawings/RealDrawings.h"
#include "bench/harness/Collector.h"
#include "bench/harness/Gather.h"
#include "bench/harness/Plan.h"
#include "bench/report/Report.h"
#include "bench/workloads/Workloads.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

/// ktdx_bench [--quick] [--filter REGEX] [--json FILE] [--drawings FOLDER]: measures the module beside the
/// plain way and beside what the host alone costs, and prints the figures. It starts itself anew for each
/// scene: with --scene and --samples it measures one, and writes down what it came to.
namespace {

struct Wishes {
    bool quick = false;
    std::string filter = ".";
    std::string json;
    std::string drawings;
    std::size_t scene = 0;
    std::string samples;
};

bench::Plan planOf(const Wishes& wishes) {
    if (!wishes.drawings.empty()) {
        bench::findRealDrawings(wishes.drawings);
    }
    bench::Plan plan;
    bench::planAll(plan, wishes.quick ? bench::Scale::quick : bench::Scale::full);
    return plan;
}

void measureScene(const Wishes& wishes) {
    const bench::Plan plan = planOf(wishes);
    plan.enter(wishes.scene, wishes.filter);
    bench::Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector, ".");
    benchmark::ClearRegisteredBenchmarks(); // so that the scene ends with the plan
    std::ofstream file(wishes.samples);
    bench::writeSamples(file, collector.samples());
}

std::string inQuotes(const std::string& word) {
    return '"' + word + '"';
}

/// In a process of its own.
std::vector<bench::Sample> samplesOf(std::size_t scene, const std::string& program, const Wishes& wishes) {
    const std::string file = wishes.samples.empty() ? "ktdx_bench.samples" : wishes.samples;
    std::string command = inQuotes(program) + " --scene " + std::to_string(scene) + " --samples " +
                          inQuotes(file) + " --filter " + inQuotes(wishes.filter);
    command += wishes.quick ? " --quick" : "";
    command += wishes.drawings.empty() ? "" : " --drawings " + inQuotes(wishes.drawings);
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): this program itself, before anything else runs
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("this has failed: " + command);
    }
    std::vector<bench::Sample> samples;
    {
        std::ifstream stream(file);
        samples = bench::readSamples(stream);
    }
    std::filesystem::remove(file);
    return samples;
}

bench::Figures measure(const std::string& program, const Wishes& wishes) {
    const bench::Plan plan = planOf(wishes);
    bench::Figures figures;
    for (const std::size_t scene : plan.scenesMatching(wishes.filter)) {
        for (const bench::Sample& sample : samplesOf(scene, program, wishes)) {
            bench::gather(plan, sample, figures);
            std::cerr << sample.name << ": " << sample.time << " ns" << std::endl;
        }
    }
    return figures;
}

void run(const std::string& program, const Wishes& wishes) {
    if (wishes.scene != 0) {
        measureScene(wishes);
        return;
    }
    const bench::Figures figures = measure(program, wishes);
    std::cout << bench::textOf(figures);
    if (!wishes.json.empty()) {
        std::ofstream file(wishes.json);
        file << bench::jsonOf(figures);
        if (!file.flush()) {
            throw std::runtime_error(wishes.json + " cannot be written");
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    Wishes wishes;
    CLI::App app("Measures the module beside the plain way and beside what the host alone costs.");
    app.add_flag("--quick", wishes.quick, "small drawings, few repetitions");
    app.add_option("--filter", wishes.filter, "only FAMILY/WORKLOAD/SIZE/COLUMN/REPETITION that match this");
    app.add_option("--json", wishes.json, "where to write the figures");
    app.add_option("--drawings", wishes.drawings, "folder with real drawings to keep parts lists of");
    app.add_option("--scene", wishes.scene, "measure this scene only");
    app.add_option("--samples", wishes.samples, "where to write what a scene came to");
    try {
        app.parse(argc, argv);
        run(argv[0], wishes);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    } catch (const std::exception& error) {
        std::cerr << "bench: " << error.what() << '\n';
        return 1;
    }
}
