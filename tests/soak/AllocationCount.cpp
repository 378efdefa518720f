#include "tests/soak/AllocationCount.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <link.h>
#include <new>

namespace {

/// Where a shared library lies in memory.
struct Range {
    std::uintptr_t begin = UINTPTR_MAX;
    std::uintptr_t end = 0;
};

int addSegments(dl_phdr_info* info, std::size_t /*size*/, void* data) {
    if (!std::strstr(info->dlpi_name, "libTidalume.so")) return 0;
    auto& range = *static_cast<Range*>(data);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD) continue;
        range.begin = std::min(range.begin, static_cast<std::uintptr_t>(info->dlpi_addr + segment.p_vaddr));
        range.end =
            std::max(range.end, static_cast<std::uintptr_t>(info->dlpi_addr + segment.p_vaddr + segment.p_memsz));
    }
    return 1;
}

Range library;
bool counting = false;
constexpr std::size_t capacity = 1024;
std::size_t sizes[capacity];
std::size_t count = 0;

void note(const void* caller, std::size_t size) {
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    if (!counting || address < library.begin || address >= library.end) return;
    if (count < capacity) sizes[count] = size;
    ++count;
}

} // namespace

void startCountingAllocations() {
    if (library.end == 0) dl_iterate_phdr(addSegments, &library);
    count = 0;
    counting = true;
}

std::vector<std::size_t> stopCountingAllocations() {
    counting = false;
    return {sizes, sizes + std::min(count, capacity)};
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
