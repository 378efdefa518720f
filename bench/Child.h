#pragma once

#include "bench/Results.h"

#include <string>
#include <vector>

namespace tidalume::bench {

/// Runs this program again and returns what it printed.
/// @param before   environment variables, or a tool that runs it
/// @param options  of the program
std::string runSelf(const std::string& before, const std::string& options);

/// The words before a program that have valgrind count its instructions.
/// @param folder  where the counts go
std::string callgrind(const std::string& folder);

/// The counts in a folder, by the names that CALLGRIND_DUMP_STATS_AT gave them, in order.
std::vector<InstructionCount> readCounts(const std::string& folder);

} // namespace tidalume::bench
