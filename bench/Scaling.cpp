#include "bench/BallField.h"
#include "bench/Benchmarks.h"
#include "bench/Particles.h"
#include "effects/water/ShallowWaterIterative.h"

#include <algorithm>

namespace tidalume::bench {
namespace {

/// An operation and the number that its cost depends on.
struct Variation {
    std::string operation;
    std::string variable;
    std::vector<int> values;
    std::function<Action(Run&, int value)> action;
};

/// One of the operations that fill a screen, of so many pixels: a power of 4.
Variation onScreen(const std::string& name) {
    return {name, "pixels", {1 << 14, 1 << 16, 1 << 18, 1 << 20}, [name](Run& run, int pixels) -> Action {
                int side = 1;
                while (side * side < pixels)
                    side *= 2;
                return {[] {}, run.screen(side, side).operation(name)};
            }};
}

Action addMetaballs(Run& run, int count) {
    const Screen& screen = run.screen(540, 960);
    const auto field = std::make_shared<BallField>(screen.width(), screen.height(), count, 20.0F);
    return {[] {}, [=] { field->drawPoints(); }};
}

Action iterate(Run& run, int count) {
    const Screen& screen = run.screen(540, 960);
    const auto water = std::make_shared<ShallowWaterIterative>();
    water->init();
    water->setScreenSize(screen.width(), screen.height());
    water->setIterationCount(count);
    return {[] {}, [=] { water->update(); }};
}

Action stepParticles(Run& run, int count) {
    run.screen(64, 64); // the clock asks its driver
    return particleStep(count);
}

const Variation variations[] = {
    onScreen("ShallowWaterIterative::update, a pass"),
    onScreen("ShallowWater::update, a step"),
    onScreen("NormalMapBuilder::build"),
    onScreen("ShallowWaterRenderer::render"),
    onScreen("Metaball2DRenderer::render"),
    onScreen("VectorGraphicRenderer::renderRadialGradient"),
    {"Metaball2DRenderer::addMetaballs", "balls", {16, 64, 256, 1024}, addMetaballs},
    {"ShallowWaterIterative::update", "iterations", {1, 2, 4, 8, 16}, iterate},
    {"ParticleManager::step", "particles", {1 << 10, 1 << 12, 1 << 14, 1 << 16}, stepParticles},
};

} // namespace

void registerScaling(Run& run) {
    for (const Variation& variation : variations) {
        const size_t series = run.results.series.size();
        run.results.series.push_back({variation.operation, variation.variable, {}, {}});
        for (const int value : variation.values) {
            const std::string name = variation.operation + "/" + std::to_string(value) + " " + variation.variable;
            registerTimed(name, std::max(1, run.pairs / 2), [&, value, series](benchmark::State& state) {
                const Action action = variation.action(run, value);
                const int runs = runsThatFill(action, run.measurement);
                run.results.series[series].values.push_back(value);
                run.results.series[series].seconds.push_back(median(state, [&] { return seconds(action, runs); }));
            });
        }
    }
}

} // namespace tidalume::bench
