#include "gallery/Background.h"
#include "gallery/Color.h"
#include "gallery/SceneTable.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <array>
#include <cstdlib>
#include <gmock/gmock.h>
#include <set>

namespace tidalume::gallery {

namespace {

using headless::HeadlessContext;
using testing::DoubleNear;
using testing::FloatNear;
using testing::Lt;

std::unique_ptr<Scene> start(const SceneEntry& entry, int width, int height) {
    srand48(7);
    std::unique_ptr<Scene> scene = entry.make();
    scene->setUp(width, height, pebbles(width, height, 7));
    return scene;
}

void drawFrames(Scene& scene, int from, int to) {
    for (int frame = from; frame < to; ++frame) {
        for (const Touch& touch : scene.demonstration(frame))
            scene.touch(touch);
        scene.drawFrame();
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

void expectDrawing(int width, int height) {
    const Picture picture = headless::framebufferPicture(width, height);
    std::set<std::array<std::uint8_t, 3>> colors;
    for (std::size_t i = 0; i < picture.rgba.size(); i += 4)
        colors.insert({picture.rgba[i], picture.rgba[i + 1], picture.rgba[i + 2]});
    EXPECT_GT(colors.size(), 100U) << "the picture is all but empty";
}

class EveryScene : public testing::TestWithParam<SceneEntry> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Table, EveryScene, testing::ValuesIn(sceneTable()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(EveryScene, DrawsThroughResizesContextLossesAndAnyTouch) {
    HeadlessContext context(97, 161);
    const auto scene = start(GetParam(), 97, 161);
    drawFrames(*scene, 0, 20);
    expectDrawing(97, 161);
    for (const auto& [width, height] : {std::pair(160, 64), {1, 1}, {64, 160}}) {
        context.resize(width, height);
        scene->setUp(width, height, pebbles(width, height, 7));
        drawFrames(*scene, 20, 24);
    }
    for (int loss = 0; loss < 2; ++loss) {
        scene->contextLost();
        context.recreate();
        scene->setUp(64, 160, pebbles(64, 160, 7));
        drawFrames(*scene, 24, 40);
        expectDrawing(64, 160);
    }
    for (const int pointer : {-1, 0, pointerCount - 1, pointerCount, 1000}) {
        scene->touch({-500, 1e6F, TouchAction::Down, pointer});
        scene->touch({32, 48, TouchAction::Move, pointer});
        drawFrames(*scene, 60, 64);
        scene->touch({32, 48, TouchAction::Up, pointer});
    }
    drawFrames(*scene, 0, 20);
    expectDrawing(64, 160);
}

// Particles are too large to be told apart on a smaller screen.
TEST_P(EveryScene, ShowsEverySetting) {
    const HeadlessContext context(270, 400);
    const auto listed = start(GetParam(), 270, 400);
    listed->set("no such setting", 1);
    for (const Parameter& parameter : listed->parameters()) {
        for (const auto& [value, limit] : {std::pair(1e9F, parameter.maximum), {-1e9F, parameter.minimum}}) {
            listed->set(parameter.name, value);
            EXPECT_EQ(*parameter.value, limit);
        }
        std::set<float> values = {parameter.initial, parameter.minimum};
        if (parameter.choices.empty()) values.insert(0.7F * parameter.minimum + 0.3F * parameter.maximum);
        for (std::size_t choice = 1; choice < parameter.choices.size(); ++choice)
            values.insert(static_cast<float>(choice));
        std::set<std::vector<std::uint8_t>> pictures;
        for (const float value : values) {
            const auto scene = start(GetParam(), 270, 400);
            scene->set(parameter.name, value);
            drawFrames(*scene, 0, 24);
            pictures.insert(headless::framebufferPicture(270, 400).rgba);
        }
        EXPECT_EQ(pictures.size(), values.size()) << parameter.name;
    }
}

TEST(Scene, HuesTurnAroundTheGreys) {
    const Color red = {1, 0, 0, 0.5F};
    EXPECT_THAT(turnHue(red, 120), testing::Pointwise(FloatNear(1e-6F), {0.0F, 1.0F, 0.0F, 0.5F}));
    EXPECT_THAT(turnHue(red, -120), testing::Pointwise(FloatNear(1e-6F), {0.0F, 0.0F, 1.0F, 0.5F}));
    EXPECT_EQ(turnHue({0.1F, 0.7F, 0.3F, 1}, 0), (Color{0.1F, 0.7F, 0.3F, 1})) << "no bit changes";
}

// Rows or columns are opaque and half transparent by turns: the middle is kept at its scale, and the ends are cut.
TEST(Background, CoverFitCutsTheEndsAveragesAndLaysOverBlack) {
    for (const bool wide : {true, false}) {
        Picture source = wide ? Picture(300, 100) : Picture(100, 300);
        for (int i = 0; i < 300 * 100; ++i) {
            std::uint8_t* pixel = wide ? source.pixel(i / 100, i % 100) : source.pixel(i % 100, i / 100);
            pixel[i / 10000] = 200;
            pixel[3] = i % 2 == 0 ? 255 : 127;
        }
        for (const int side : {25, 100, 333}) {
            const Picture square = coverFit(source, side, side);
            double means[4] = {};
            for (std::size_t i = 0; i < square.rgba.size(); ++i)
                means[i % 4] += 1.0 * square.rgba[i] / (side * side);
            EXPECT_THAT(means, testing::ElementsAre(Lt(2), DoubleNear(150, 2), Lt(2), DoubleNear(255, 1e-3))) << side;
        }
    }
}

} // namespace tidalume::gallery
