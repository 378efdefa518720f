#include "bench/Benchmarks.h"
#include "bench/CommandOutput.h"
#include "foundation/GlobalProperty.h"
#include "testing/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <valgrind/callgrind.h>

namespace tidalume::bench {
namespace {

struct Start {
    const char* name;
    bool cached;         ///< the program cache is switched on, and filled
    const char* options; ///< of the program that starts
};

constexpr Start starts[] = {
    {"from text", false, ""},
    {"from the cache; a stand-in makes the driver accept it", true, "--accept-binaries"},
    {"from the cache, which the driver rejects", true, ""},
};

/// Every start is this program in a process of its own with an empty driver cache: Mesa keeps the first one's until the
/// process ends, and without it, it has no program binaries either.
/// @param tool  empty, or what runs the program
/// @return      seconds
double startOnce(const Start& start, const test::TemporaryFolder& programs, const std::string& tool = "") {
    const test::TemporaryFolder driverCache;
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string cache = start.cached ? " --program-cache '" + programs.path() + "' " : " ";
    return std::stod(outputOf("MESA_SHADER_CACHE_DIR='" + driverCache.path() + "' " + tool + " '" + self +
                              "' --start-up" + cache + start.options));
}

/// In the first dump of callgrind.
double instructions(const std::string& callgrindOut) {
    const std::string key = "totals: ";
    std::ifstream file(callgrindOut + ".1");
    for (std::string line; std::getline(file, line);)
        if (line.rfind(key, 0) == 0) return std::stod(line.substr(key.size()));
    throw std::runtime_error("no instructions were counted in " + callgrindOut);
}

/// Counts under valgrind. The driver takes only what it has written on the same processor, and valgrind's is another.
double countInstructions(const Start& start) {
    const test::TemporaryFolder programs;
    const test::TemporaryFolder counts;
    const std::string out = counts.path() + "/callgrind.out";
    const std::string callgrind = "valgrind --tool=callgrind --log-file=/dev/null --callgrind-out-file='" + out + "'";
    if (start.cached) startOnce(start, programs, callgrind);
    startOnce(start, programs, callgrind);
    return instructions(out);
}

} // namespace

double timeInitCalls(const std::string& programCache, bool acceptBinaries) {
    GlobalProperty::BINARY_SHADER = !programCache.empty();
    std::snprintf(GlobalProperty::ROOT_DIR, sizeof(GlobalProperty::ROOT_DIR), "%s/", programCache.c_str());
    acceptProgramBinaries(acceptBinaries);
    const headless::HeadlessContext context(64, 64);
    std::vector<AnyEffect> effects;
    for (const EffectCase& effectCase : effectCases())
        effects.push_back(effectCase.make());
    const auto init = [&] {
        CALLGRIND_ZERO_STATS;
        for (const AnyEffect& effect : effects)
            effect.init();
        CALLGRIND_DUMP_STATS;
    };
    return seconds({[] {}, init}, 1);
}

void registerStartUp(Run& run) {
    for (const Start& start : starts) {
        registerTimed(std::string("start-up/") + start.name, std::max(1, run.pairs / 2), [&](benchmark::State& state) {
            run.current.reset();
            const test::TemporaryFolder programs;
            if (start.cached) startOnce(start, programs);
            const double time = median(state, [&] { return startOnce(start, programs); });
            run.results.startUps.push_back({start.name, time, run.isWhole ? countInstructions(start) : 0.0});
        });
    }
}

} // namespace tidalume::bench
