#include "bench/Benchmarks.h"
#include "bench/GLReplay.h"

#include <benchmark/benchmark.h>

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

/// After a first frame, in which whatever grows has grown.
void registerFrameCosts(Theatre& theatre, Results& results) {
    benchmark::RegisterBenchmark("frame of all effects", [&](benchmark::State& state) {
        Stage& stage = theatre.stage(64, 64);
        std::vector<std::function<void()>> actions = {[&] { stage.particles.render(20.0F, 5.0F); },
                                                      [&] { stage.comets.push(20.0F, 30.0F, 0); },
                                                      [&] { stage.threeBuffers.update(); }};
        for (const Operation& operation : stage.operations())
            actions.push_back(operation.run);
        const auto frame = [&] {
            for (const auto& action : actions)
                action();
        };
        for (const int frames : {500, 0}) { // the second time the array of the particles is large enough
            stage.particles.push(20.0F, 20.0F, 0);
            stage.particles.push(40.0F, 40.0F, 7);
            for (int i = 0; i < frames; ++i)
                stage.particles.update();
        }
        frame();

        int count = 0;
        allocations = &count;
        for (auto iteration : state)
            frame();
        allocations = nullptr;

        results.frame = {count, record(frame).transfers};
        state.counters["allocations"] = results.frame->allocations;
        state.counters["transfers"] = results.frame->transfers;
    })->Iterations(FrameCosts::frames);
}

} // namespace tidalume::bench
