#include "bench/Benchmarks.h"
#include "bench/Measure.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <stdexcept>

namespace tidalume::bench {
namespace {

/// An operation and the number that its cost is looked at against.
struct Variation {
    std::string operation;
    std::string variable;
    std::vector<int> values;
    std::function<Batch(Theatre&, int value)> batch;
};

/// Of a screen of so many pixels, a power of 4: one of the operations that fill it.
std::function<Batch(Theatre&, int)> onScreen(const std::string& name) {
    return [name](Theatre& theatre, int pixels) -> Batch {
        int side = 1;
        while (side * side < pixels)
            side *= 2;
        for (const Operation& operation : theatre.stage(side, side).operations()) {
            if (operation.name == name) return {[] {}, operation.run};
        }
        throw std::logic_error("no operation " + name);
    };
}

std::vector<Variation> variations() {
    const std::vector<int> pixels = {1 << 14, 1 << 16, 1 << 18, 1 << 20};
    std::vector<Variation> all;
    for (const char* name : {"ShallowWaterIterative::update, a pass", "ShallowWater::update, a step",
                             "NormalMapBuilder::build", "ShallowWaterRenderer::render", "Metaball2DRenderer::render",
                             "VectorGraphicRenderer::renderRadialGradient"}) {
        all.push_back({name, "pixels", pixels, onScreen(name)});
    }
    all.push_back({"Metaball2DRenderer::addMetaballs", "balls", {16, 64, 256, 1024}, [](Theatre& theatre, int balls) {
                       Stage& stage = theatre.stage(540, 960);
                       stage.setBalls(balls, 20.0F);
                       return Batch{[] {},
                                    [&stage, balls] {
                                        stage.metaballs.addMetaballs(stage.balls.data(),
                                                                     static_cast<unsigned int>(balls));
                                    }};
                   }});
    all.push_back({"ShallowWaterIterative::update", "iterations", {1, 2, 4, 8, 16}, [](Theatre& theatre, int passes) {
                       Stage& stage = theatre.stage(540, 960);
                       return Batch{[] {},
                                    [&stage, passes] {
                                        stage.iterative.setIterationCount(passes);
                                        stage.iterative.update();
                                    }};
                   }});
    all.push_back(
        {"ParticleManager::step", "particles", {1 << 10, 1 << 12, 1 << 14, 1 << 16}, [](Theatre&, int count) {
             const auto manager = std::make_shared<ParticleManager>();
             // Anew in each batch: velocities come to denormal numbers, which cost more, in 50,000 steps.
             const std::vector<Particle> start(static_cast<size_t>(count), {{0.0F, 0.0F}, 40.0F, 0.0F, {50.0F, 60.0F}});
             return Batch{[=] { *manager->getParticleVector() = start; }, [=] { manager->step(0.2F); }};
         }});
    return all;
}

} // namespace

void registerScaling(Theatre& theatre, const Effort& effort, Results& results) {
    for (const Variation& variation : variations()) {
        results.series.push_back({variation.operation, variation.variable, {}, {}});
        for (const int value : variation.values) {
            const std::string name = variation.operation + "/" + std::to_string(value) + " " + variation.variable;
            benchmark::RegisterBenchmark(
                name.c_str(),
                [=, &theatre, &results, series = results.series.size() - 1](benchmark::State& state) {
                    const Batch batch = variation.batch(theatre, value);
                    const int runs = runsThatFill(batch, effort.batch);
                    std::vector<double> times;
                    for (auto iteration : state) {
                        times.push_back(seconds(batch, runs));
                        state.SetIterationTime(times.back());
                    }
                    results.series[series].values.push_back(value);
                    results.series[series].seconds.push_back(quantile(times, 0.5));
                })
                ->Iterations(std::max(1, effort.pairs / 2))
                ->UseManualTime()
                ->Unit(benchmark::kMicrosecond);
        }
    }
}

} // namespace tidalume::bench
