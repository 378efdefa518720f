#include "bench/Benchmarks.h"
#include "bench/Child.h"
#include "bench/GLReplay.h"
#include "bench/Measure.h"
#include "foundation/GlobalProperty.h"
#include "testing/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <valgrind/callgrind.h>

namespace tidalume::bench {
namespace {

struct Effects {
    Metaball2DRenderer metaballs;
    IntensityMapBuilder intensity;
    NormalMapBuilder normals;
    ShallowWaterIterative iterative;
    ShallowWater threeBuffers;
    ShallowWaterRenderer water;
    VectorGraphicRenderer graphics;
    CometRenderer comets;

    void init() {
        metaballs.init(1.0F);
        intensity.init();
        normals.init();
        iterative.init();
        threeBuffers.init();
        water.init();
        graphics.init();
        comets.init();
    }
};

struct Start {
    const char* name;
    bool cached;         ///< the program cache is switched on, and filled
    const char* options; ///< of the child
};

constexpr Start starts[] = {
    {"from text", false, ""},
    {"from the cache; a stand-in makes the driver accept it", true, "--accept-binaries"},
    {"from the cache, which the driver rejects", true, ""},
};

/// Every start is a process of its own with an empty driver cache: Mesa keeps the first one's until the process ends,
/// and without it, it has no program binaries either.
std::string startOnce(const Start& start, const test::TemporaryFolder& programs, const std::string& tool) {
    const test::TemporaryFolder driverCache;
    const std::string cache = start.cached ? " --program-cache '" + programs.path() + "' " : " ";
    return runSelf("MESA_SHADER_CACHE_DIR='" + driverCache.path() + "' " + tool, "--start-up" + cache + start.options);
}

} // namespace

double timeInitCalls(const std::string& programCache, bool acceptBinaries) {
    GlobalProperty::BINARY_SHADER = !programCache.empty();
    std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", programCache.c_str());
    acceptProgramBinaries(acceptBinaries);
    const headless::HeadlessContext context(64, 64);
    Effects effects;
    return seconds(
        [&] {
            CALLGRIND_ZERO_STATS;
            effects.init();
            CALLGRIND_DUMP_STATS_AT("start-up");
        },
        1);
}

void registerStartUp(Theatre& theatre, const Effort& effort, Results& results) {
    for (const Start& start : starts) {
        benchmark::RegisterBenchmark((std::string("start-up/") + start.name).c_str(),
                                     [&](benchmark::State& state) {
                                         theatre.close();
                                         const test::TemporaryFolder programs;
                                         if (start.cached) startOnce(start, programs, "");
                                         std::vector<double> times;
                                         for (auto iteration : state) {
                                             times.push_back(std::stod(startOnce(start, programs, "")));
                                             state.SetIterationTime(times.back());
                                         }
                                         results.startUps.push_back({start.name, quantile(times, 0.5), 0.0});
                                     })
            ->Iterations(std::max(1, effort.pairs / 2))
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

void countStartUpInstructions(Results& results) {
    for (StartUp& found : results.startUps) {
        const auto* start =
            std::find_if(std::begin(starts), std::end(starts), [&](const Start& s) { return s.name == found.name; });
        const test::TemporaryFolder programs;
        const test::TemporaryFolder counts;
        // The driver takes only what it has written on the same processor, and valgrind's is another.
        if (start->cached) startOnce(*start, programs, callgrind(counts.path()));
        startOnce(*start, programs, callgrind(counts.path()));
        for (const InstructionCount& count : readCounts(counts.path()))
            found.instructions = count.instructions;
    }
}

} // namespace tidalume::bench
