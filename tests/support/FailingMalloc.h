#pragma once

/// Makes an allocation of the library fail: `successes` allocations from now go well, the next one does not, then all
/// do again. -1 makes none fail. These are calls of malloc, calloc and new (std::nothrow) of the code that is linked
/// into the test.
/// @return whether the allocation that was to fail before has been asked for
bool failingMalloc(int successes);
