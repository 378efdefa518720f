#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace tidalume::bench {

/// Whether the driver of the current context draws on the processor, in threads of this process.
bool drawsOnProcessor();

/// Seconds per run of an action, the GL's work included: of all threads' processor time where the driver draws on the
/// processor, which other processes disturb less, and of the wall's clock where it does not. Needs a current context.
double seconds(const std::function<void()>& action, int runs);

/// What is run many times in a row, and what is done once before that.
struct Batch {
    std::function<void()> prepare;
    std::function<void()> run;
};

/// Seconds per run, the preparation left out.
double seconds(const Batch& batch, int runs);

/// Runs that last this many seconds in all; at least 1.
int runsThatFill(const Batch& batch, double duration);

/// The value below which a share of the values lies, 0.5 for the median.
double quantile(std::vector<double> values, double share);

/// The exponent of the power law that fits the points best: the slope of a line through their logarithms.
double exponent(const std::vector<double>& x, const std::vector<double>& y);

} // namespace tidalume::bench
