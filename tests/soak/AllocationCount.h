#pragma once

#include <cstddef>
#include <vector>

/// Sizes of the blocks that code of libTidalume.so itself asked for between start and stop, through malloc, calloc,
/// realloc or new. What the driver, the log or the scenes allocate has another caller.
void startCountingAllocations();
std::vector<std::size_t> stopCountingAllocations();
