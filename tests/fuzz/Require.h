#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process, which is how a fuzzer sees a fault, where something does not hold.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}
