#include "bench/Benchmarks.h"
#include "bench/Report.h"
#include "commandline/Parse.h"
#include "foundation/RenderTarget.h"

#include <android/log.h>

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <regex>

using namespace tidalume;
using namespace tidalume::bench;

namespace {

struct Options {
    std::string out = "out/bench";
    std::optional<std::string> filter;
    bool quick = false;
    bool check = false;
    bool startUp = false;
    std::string programCache;
    bool acceptBinaries = false;
};

void write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path);
    file << text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
    std::cout << path.string() << "\n";
}

void initializeBenchmarks(const std::string& argument) {
    std::string arguments[] = {"tidalume-bench", argument};
    char* pointers[] = {arguments[0].data(), arguments[1].data()};
    int count = 2;
    benchmark::Initialize(&count, pointers);
}

/// Only a whole run is written: figures of another would take the place of better ones.
void runBenchmarks(const Options& options) {
    Run run;
    run.isWhole = !options.filter && !options.quick;
    if (options.quick) run.pairs = 1;
    if (options.quick) run.measurement = 0.0;
    if (run.isWhole) std::filesystem::create_directories(options.out);
    initializeBenchmarks(run.isWhole ? "--benchmark_out=" + options.out + "/results.json"
                                     : "--benchmark_filter=" + options.filter.value_or("."));
    {
        const headless::HeadlessContext context(1, 1);
        run.results.driver = context.driver();
        run.results.clock = drawsOnProcessor() ? "processor time of all threads" : "wall-clock time";
    }
    benchmark::AddCustomContext("driver", run.results.driver);
    std::cout << "Driver: " << run.results.driver << "\n";
    registerComparisons(run);
    registerScaling(run);
    registerFieldScales(run);
    registerFrameCosts(run);
    registerStartUp(run);
    if (benchmark::RunSpecifiedBenchmarks() == 0)
        throw std::runtime_error("--filter matches no benchmark: '" + *options.filter + "'");

    const std::string tables = markdownTables(run.results);
    std::cout << tables;
    if (!run.isWhole) return;
    write(options.out + "/tables.md", tables);
    write(options.out + "/scaling.svg", scalingPlot(run.results));
}

/// Accepts what the benchmark library takes for a filter.
CLI::Validator filterCheck() {
    const auto check = [](const std::string& text) -> std::string {
        try {
            const std::regex filter(text, std::regex::extended);
            return "";
        } catch (const std::regex_error&) {
            return "\"" + text + "\" is not an extended regular expression";
        }
    };
    return {check, ""};
}

int run(int argc, char** argv) {
    CLI::App app("Measures Tidalume against plain forms of the same effects.", "tidalume-bench");
    Options options;
    app.add_option("--out", options.out, "Folder for results.json, tables.md and scaling.svg")
        ->check(namedCheck("folder"))
        ->capture_default_str();
    app.add_option("--filter", options.filter, "Regular expression: benchmarks to run; nothing is written then")
        ->check(namedCheck("benchmark"))
        ->check(filterCheck());
    app.add_flag("--quick", options.quick, "Run everything once, to see that it runs; nothing is written then");
    app.add_flag("--check", options.check,
                 "Measure nothing; compare what the plain forms draw with what Tidalume draws");
    // What this program runs itself with; an empty group keeps them out of the help.
    app.add_flag("--start-up", options.startUp)->group("");
    app.add_option("--program-cache", options.programCache)->group("");
    app.add_flag("--accept-binaries", options.acceptBinaries)->group("");
    parse(app, argc, argv);

    __android_log_set_logger([](const __android_logger_data*, const char*) {});
    if (options.check) return checkForms() ? 0 : 1;
    if (options.startUp) {
        std::cout << timeInitCalls(options.programCache, options.acceptBinaries) << "\n";
    } else {
        runBenchmarks(options);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "tidalume-bench: " << error.what() << "\n";
        return 2;
    }
}
