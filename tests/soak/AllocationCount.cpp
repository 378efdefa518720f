#include "tests/soak/AllocationCount.h"

#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <new>

namespace {

bool counting = false;
constexpr std::size_t capacity = 1024;
std::size_t sizes[capacity];
std::size_t count = 0;

void note(const void* caller, std::size_t size) {
    dl_find_object library;
    if (!counting || count == capacity || _dl_find_object(const_cast<void*>(caller), &library) != 0) return;
    if (std::strstr(library.dlfo_link_map->l_name, "libTidalume.so")) sizes[count++] = size;
}

} // namespace

void startCountingAllocations() {
    count = 0;
    counting = true;
}

std::vector<std::size_t> stopCountingAllocations() {
    counting = false;
    return {sizes, sizes + count};
}

// These take the place of the C and C++ libraries' functions in the whole process.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
    note(__builtin_return_address(0), size);
    return __libc_malloc(size);
}
void* calloc(std::size_t number, std::size_t size) {
    note(__builtin_return_address(0), number * size);
    return __libc_calloc(number, size);
}
void* realloc(void* block, std::size_t size) {
    note(__builtin_return_address(0), size);
    return __libc_realloc(block, size);
}
}

void* operator new(std::size_t size) {
    note(__builtin_return_address(0), size);
    void* block = __libc_malloc(size);
    if (!block) throw std::bad_alloc();
    return block;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    note(__builtin_return_address(0), size);
    return __libc_malloc(size);
}
