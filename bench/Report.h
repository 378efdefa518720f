#pragma once

#include "bench/Results.h"

#include <string>

namespace tidalume::bench {

/// The results as tables in Markdown, with the date and the driver. What was not measured is left out.
std::string markdownTables(const Results& results);

/// The series as lines in a picture with logarithmic axes, each from its first value.
std::string scalingPlot(const Results& results);

} // namespace tidalume::bench
