#include "tests/support/FailingMalloc.h"

#include <cstddef>
#include <new>
#include <utility>

namespace {

int successesLeft = -1;
bool failed = false;

bool mustFail() {
    if (successesLeft < 0 || successesLeft-- > 0) return false;
    failed = true;
    return true;
}

} // namespace

bool failingMalloc(int successes) {
    successesLeft = successes;
    return std::exchange(failed, false);
}

// The linker sends malloc and calloc of all linked objects through here (--wrap).
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __wrap_malloc(size_t size) {
    return mustFail() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
    return mustFail() ? nullptr : __real_calloc(count, size);
}
}

// The memory comes from the throwing forms, so that a sanitizer's bookkeeping stays whole.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return mustFail() ? nullptr : ::operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return mustFail() ? nullptr : ::operator new[](size);
}
