#include "bench/Measure.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <string>

namespace tidalume::bench {

bool drawsOnProcessor() {
    const std::string renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    return renderer.find("llvmpipe") != std::string::npos || renderer.find("softpipe") != std::string::npos;
}

double seconds(const std::function<void()>& action, int runs) {
    const clockid_t clock = drawsOnProcessor() ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
    const auto now = [clock] {
        timespec time = {};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    glFinish();
    const double start = now();
    for (int i = 0; i < runs; ++i)
        action();
    glFinish();
    return (now() - start) / runs;
}

double seconds(const Batch& batch, int runs) {
    batch.prepare();
    return seconds(batch.run, runs);
}

int runsThatFill(const Batch& batch, double duration) {
    seconds(batch, 1); // the first run of a program compiles it
    const double once = std::max(seconds(batch, 3), 1e-8);
    return std::clamp(static_cast<int>(std::lround(duration / once)), 1, 100000);
}

double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(std::lround(share * static_cast<double>(values.size() - 1)))];
}

double exponent(const std::vector<double>& x, const std::vector<double>& y) {
    const auto count = static_cast<double>(x.size());
    double sumX = 0.0;
    double sumY = 0.0;
    double sumXX = 0.0;
    double sumXY = 0.0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double lx = std::log(x[i]);
        const double ly = std::log(y[i]);
        sumX += lx;
        sumY += ly;
        sumXX += lx * lx;
        sumXY += lx * ly;
    }
    return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

} // namespace tidalume::bench
