#pragma once

#include "bench/Measure.h"
#include "bench/Results.h"
#include "bench/Screen.h"

#include <memory>

namespace tidalume::bench {

/// One run of the benchmark: how much it measures, and what it has found so far.
struct Run {
    bool isWhole = true;        ///< also what takes long is measured, and the results are written
    int pairs = 31;             ///< of measurements that are compared
    double measurement = 0.012; ///< how long one takes, in seconds
    Results results;

    /// The screen of this size, with the library's shaders; one at a time. It takes the place of another size's.
    Screen& screen(int width, int height);

    std::unique_ptr<Screen> current;
};

// Each registers its benchmarks, which add what they find to the results.

void registerComparisons(Run& run);
void registerScaling(Run& run);
void registerFieldScales(Run& run);
void registerStartUp(Run& run);
void registerFrameCosts(Run& run);

/// Seconds of the `init` calls of all effects in a new context.
/// @param programCache    folder of the program cache; empty: it stays switched off
/// @param acceptBinaries  whether the driver takes what the cache holds
double timeInitCalls(const std::string& programCache, bool acceptBinaries);

/// Compares what the plain forms draw and compute with what the library does from the same input, and prints the
/// largest differences.
/// @return  whether all are within their bounds
bool checkForms();

} // namespace tidalume::bench
