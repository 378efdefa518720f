#include "bench/Measure.h"

#include "foundation/RenderTarget.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <string>

namespace tidalume::bench {

double seconds(const Action& action, int runs) {
    action.prepare();
    const clockid_t clock = drawsOnProcessor() ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
    const auto now = [clock] {
        timespec time = {};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    glFinish();
    const double start = now();
    for (int i = 0; i < runs; ++i)
        action.run();
    glFinish();
    return (now() - start) / runs;
}

int runsThatFill(const Action& action, double duration) {
    seconds(action, 1); // the first run of a program compiles it
    const double once = std::max(seconds(action, 3), 1e-8);
    return std::clamp(static_cast<int>(std::lround(duration / once)), 1, 100000);
}

void registerTimed(const std::string& name, int iterations, const std::function<void(benchmark::State&)>& body) {
    benchmark::RegisterBenchmark(name.c_str(), body)
        ->Iterations(iterations)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

double median(benchmark::State& state, const std::function<double()>& measureOnce) {
    std::vector<double> times;
    for (auto iteration : state) {
        times.push_back(measureOnce());
        state.SetIterationTime(times.back());
    }
    return quantile(times, 0.5);
}

double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(std::lround(share * static_cast<double>(values.size() - 1)))];
}

void summarize(const std::vector<double>& library, const std::vector<double>& other, const std::vector<double>& floors,
               Comparison& found) {
    std::vector<double> ratios;
    for (size_t i = 0; i < library.size(); ++i)
        ratios.push_back(library[i] / other[i]);
    found.library = quantile(library, 0.5);
    found.other = quantile(other, 0.5);
    found.ratio = quantile(ratios, 0.5);
    found.lowerQuartile = quantile(ratios, 0.25);
    found.upperQuartile = quantile(ratios, 0.75);
    if (!floors.empty()) found.floor = quantile(floors, 0.5);
}

} // namespace tidalume::bench
