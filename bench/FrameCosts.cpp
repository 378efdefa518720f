#include "bench/Benchmarks.h"
#include "bench/LookFrames.h"

#include <GLES3/gl3.h>

#include <benchmark/benchmark.h>
#include <cstdint>
#include <deque>
#include <memory>
#include <stdexcept>

/// Allocations of the linked objects while this is not null; see the linker's --wrap in CMakeLists.txt.
static int* allocations = nullptr;

extern "C" {
#define COUNT(name, parameters, arguments)                                                                             \
    void* __real_##name parameters;                                                                                    \
    void* __wrap_##name parameters {                                                                                   \
        if (allocations) ++*allocations;                                                                               \
        return __real_##name arguments;                                                                                \
    }
COUNT(malloc, (size_t size), (size))
COUNT(calloc, (size_t count, size_t size), (count, size))
COUNT(realloc, (void* old, size_t size), (old, size))
COUNT(_Znwm, (size_t size), (size))
COUNT(_Znam, (size_t size), (size))
COUNT(_ZnwmRKSt9nothrow_t, (size_t size, const void* tag), (size, tag))
COUNT(_ZnamRKSt9nothrow_t, (size_t size, const void* tag), (size, tag))
}

namespace tidalume::bench {
namespace {

template <typename Body>
int allocationsOf(Body body) {
    int count = 0;
    allocations = &count;
    body();
    allocations = nullptr;
    return count;
}

} // namespace

/// On a screen where everything has been drawn before: whatever grows has grown.
void registerFrameCosts(Run& run) {
    benchmark::RegisterBenchmark("frame of all effects and looks", [&](benchmark::State& state) {
        const Screen& screen = run.screen(64, 64);
        std::deque<LookFrames> looks;
        for (const LookCase& look : lookCases)
            looks.emplace_back(look.make(), screen.width(), screen.height());
        const auto frame = [&] {
            for (const Operation& operation : screen.operations())
                operation.run();
            for (LookFrames& look : looks)
                look.draw();
        };
        if (allocationsOf([] { benchmark::DoNotOptimize(std::make_unique<int>()); }) != 1)
            throw std::logic_error("an allocation is not counted");
        std::uint8_t pixel[4];
        if (record([&] { glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel); }).transfers != 1)
            throw std::logic_error("a read-back is not counted");
        const int count = allocationsOf([&] {
            for (auto iteration : state)
                frame();
        });

        const GLCalls calls = record([&] {
            for (int i = 0; i < FrameCosts::frames; ++i)
                frame();
        });
        run.results.frame = {count, calls.transfers};
        state.counters["allocations"] = run.results.frame->allocations;
        state.counters["transfers"] = run.results.frame->transfers;
    })->Iterations(FrameCosts::frames);
}

} // namespace tidalume::bench
