#pragma once

#include "bench/Results.h"

#include <benchmark/benchmark.h>
#include <functional>
#include <string>
#include <vector>

namespace tidalume::bench {

/// What is measured.
struct Action {
    std::function<void()> prepare; ///< once, before the runs; not measured
    std::function<void()> run;
};

/// Seconds per run, the GL's work included: of all threads' processor time where the driver draws on the processor,
/// which other processes disturb less, and of the wall's clock where it does not. Needs a current context.
double seconds(const Action& action, int runs);

/// Runs that last this many seconds in all; at least 1.
int runsThatFill(const Action& action, double duration);

/// Registers a benchmark that tells the times of its iterations itself.
void registerTimed(const std::string& name, int iterations, const std::function<void(benchmark::State&)>& body);

/// Measures once per iteration.
/// @param measureOnce  gives seconds
/// @return             their median
double median(benchmark::State& state, const std::function<double()>& measureOnce);

/// The value below which a share of the values lies, 0.5 for the median.
double quantile(std::vector<double> values, double share);

/// Fills the figures of a comparison in.
/// @param library, other  seconds of runs that were measured in turn
/// @param floors          empty where none was measured
void summarize(const std::vector<double>& library, const std::vector<double>& other, const std::vector<double>& floors,
               Comparison& found);

} // namespace tidalume::bench
