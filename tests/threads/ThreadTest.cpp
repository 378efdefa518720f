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
#include <vector>

namespace {

using namespace tidalume::headless;

constexpr int width = 64;
constexpr int height = 96;
constexpr int frames = 8;

using Pixels = std::vector<float>;

void append(Pixels& pixels, const PixelArray& more) {
    pixels.insert(pixels.end(), more.rgba.begin(), more.rgba.end());
}

/// Waves and a pond, seen through refraction.
Pixels drawWater() {
    HeadlessContext context(width, height);
    ShallowWaterIterative waves;
    ShallowWater pond;
    IntensityMapBuilder shapes;
    NormalMapBuilder normals;
    ShallowWaterRenderer view;
    const auto setUp = [](auto&... effects) { (..., (effects.init(), effects.setScreenSize(width, height))); };
    setUp(waves, pond, shapes, normals, view);
    const GLuint ground = makeTexture(GL_RGBA8, 2, 1, std::vector<std::uint8_t>{255, 90, 0, 255, 40, 0, 200, 255});
    view.setTexture(static_cast<int>(ground));

    Pixels pixels;
    float center[] = {30.0F, 40.0F};
    float end[] = {50.0F, 80.0F};
    waves.addDrop(center, 20.0F, 10.0F, 1.0F);
    pond.addDrop(center, 20.0F, 0.5F);
    for (int frame = 0; frame < frames; ++frame) {
        glDisable(GL_BLEND);
        waves.update();
        pond.update();
        shapes.addDropLine(center, end, 10.0F, 5.0F, 0.5F);
        normals.build(waves.getTexture());
        view.render(waves.getTexture(), normals.getTexture());
        for (const GLuint heights : {waves.getTexture(), pond.getTexture(), shapes.getTexture()})
            append(pixels, readTexture(heights, width, height));
        append(pixels, readFramebuffer(width, height));
    }
    return pixels;
}

/// Comets, particles (with their metaballs) and vector graphics: also all that takes random numbers.
Pixels drawGraphics() {
    HeadlessContext context(width, height);
    srand48(5);
    CometRenderer comets;
    MetaballRenderer particles;
    VectorGraphicRenderer graphics;
    comets.init();
    particles.init(1.0F);
    graphics.init();
    comets.setScreenSize(width, height);
    particles.setScreenSize(width, height);
    graphics.setScreenSize(width, height);

    Pixels pixels;
    float inner[] = {0.1F, 0.2F, 0.9F, 1.0F};
    float outer[] = {0.1F, 0.9F, 0.3F, 1.0F};
    comets.push(30.0F, 40.0F, 0);
    particles.push(30, 40, 0);
    for (int frame = 0; frame < frames; ++frame) {
        graphics.renderRadialGradient(20.0F, 30.0F, 5.0F, inner, 60.0F, outer);
        graphics.renderCircle(50.0F, 20.0F, 12.0F, inner);
        particles.push(30 + 2 * frame, 40, 2);
        particles.render(20.0F, 0.8F);
        comets.render(0.1 * frame);
        append(pixels, readFramebuffer(width, height));
    }
    return pixels;
}

TEST(Threads, ContextsWithSeparateClassesDrawAsIfAlone) {
    const Pixels water = drawWater();
    const Pixels graphics = drawGraphics();
    for (int round = 0; round < 20; ++round) {
        auto otherWater = std::async(std::launch::async, drawWater);
        auto otherGraphics = std::async(std::launch::async, drawGraphics);
        EXPECT_TRUE(otherWater.get() == water);
        EXPECT_TRUE(otherGraphics.get() == graphics);
    }
}

} // namespace
