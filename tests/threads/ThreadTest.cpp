#include "effects/comet/CometRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <cstdlib>
#include <future>
#include <gtest/gtest.h>

namespace {

constexpr int width = 64;
constexpr int height = 96;
constexpr int frames = 8;

using Pixels = std::vector<float>;

template <typename... Effects>
void setUp(Effects&... effects) {
    (..., (effects.init(), effects.setScreenSize(width, height)));
}

/// Waves with the slopes of another height field, above the heights of a pond.
Pixels drawWater() {
    tidalume::headless::HeadlessContext context(width, height);
    ShallowWaterIterative waves;
    ShallowWater pond;
    IntensityMapBuilder shapes;
    NormalMapBuilder normals;
    ShallowWaterRenderer view;
    setUp(waves, pond, shapes, normals, view);

    float center[] = {30, 40};
    float end[] = {50, 80};
    waves.addDrop(center, 20, 10, 1);
    pond.addDrop(center, 20, 0.5F);
    for (int frame = 0; frame < frames; ++frame) {
        glDisable(GL_BLEND);
        waves.update();
        pond.update();
        shapes.addDropLine(center, end, 10, 5, 0.5F);
        normals.build(shapes.getTexture());
        view.setTexture(static_cast<int>(pond.getTexture()));
        view.render(waves.getTexture(), normals.getTexture());
    }
    return tidalume::headless::readFramebuffer(width, height).rgba;
}

/// Comets, particles (with their metaballs) and vector graphics: also all that takes random numbers.
Pixels drawGraphics() {
    tidalume::headless::HeadlessContext context(width, height);
    srand48(5);
    CometRenderer comets;
    MetaballRenderer particles;
    VectorGraphicRenderer graphics;
    particles.init(1);
    particles.setScreenSize(width, height);
    setUp(comets, graphics);

    float inner[] = {0.1F, 0.2F, 0.9F, 1};
    float outer[] = {0.1F, 0.9F, 0.3F, 1};
    comets.push(30, 40, 0);
    for (int frame = 0; frame < frames; ++frame) {
        graphics.renderRadialGradient(20, 30, 5, inner, 60, outer);
        particles.push(30 + 2 * frame, 40, frame == 0 ? 0 : 2);
        particles.render(20, 0.8F);
        comets.render(0.1 * frame);
    }
    return tidalume::headless::readFramebuffer(width, height).rgba;
}

TEST(Threads, ContextsWithSeparateClassesDrawAsIfAlone) {
    const Pixels water = drawWater();
    const Pixels graphics = drawGraphics();
    for (int round = 0; round < 20; ++round) {
        auto otherWater = std::async(std::launch::async, drawWater);
        EXPECT_TRUE(drawGraphics() == graphics);
        EXPECT_TRUE(otherWater.get() == water);
    }
}

} // namespace
