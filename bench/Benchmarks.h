#pragma once

#include "bench/Results.h"
#include "bench/Stage.h"
#include "headless/HeadlessContext.h"

#include <memory>

namespace tidalume::bench {

/// How long everything takes.
struct Effort {
    int pairs = 31;
    double batch = 0.012; ///< seconds of one measurement
};

/// The stage that the benchmark at hand needs, one at a time.
class Theatre {
  public:
    /// The stage of this size, with framebuffer 0 of the same size.
    Stage& stage(int width, int height);
    /// Ends the stage and its context.
    void close();

  private:
    std::unique_ptr<headless::HeadlessContext> mContext;
    std::unique_ptr<Stage> mStage;
};

// Each registers its benchmarks; they refer to the arguments, and add what they find to the results.

void registerComparisons(Theatre& theatre, const Effort& effort, Results& results);
void registerScaling(Theatre& theatre, const Effort& effort, Results& results);
void registerStartUp(Theatre& theatre, const Effort& effort, Results& results);
void registerFrameCosts(Theatre& theatre, Results& results);

/// Compares what the plain forms draw and compute with what the library does from the same input, and prints the
/// largest differences.
/// @return  whether all are within their bounds
bool checkForms();

/// Runs this program again under valgrind, to do what `timeInitCalls` does.
void countStartUpInstructions(Results& results);

/// Seconds of the `init` calls of all effects in a new context.
/// @param programCache    folder of the program cache; empty: it stays switched off
/// @param acceptBinaries  whether the driver takes what the cache holds
double timeInitCalls(const std::string& programCache, bool acceptBinaries);

} // namespace tidalume::bench
