#include "gallery/Background.h"
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
    for (const auto& [width, height] : {std::pair(1, 1), {64, 160}}) {
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
    for (const TouchAction action : {TouchAction::Down, TouchAction::Move, TouchAction::Up}) {
        for (const int pointer : {-1, 0, pointerCount})
            scene->touch({-500, 1e6F, action, pointer});
        drawFrames(*scene, 60, 64);
    }
    drawFrames(*scene, 0, 20);
    expectDrawing(64, 160);
}

// Particles are too large to be told apart on a smaller screen.
TEST_P(EveryScene, ShowsEverySetting) {
    const HeadlessContext context(270, 400);
    const auto listed = GetParam().make();
    for (const Parameter& parameter : listed->parameters()) {
        const float step = parameter.choices.empty() ? 0.4F * (parameter.maximum - parameter.minimum) : 1;
        std::set<std::vector<std::uint8_t>> pictures;
        std::size_t values = 0;
        for (float value = parameter.minimum; value <= parameter.maximum; value += step, ++values) {
            const auto scene = start(GetParam(), 270, 400);
            scene->set(parameter.name, value);
            drawFrames(*scene, 0, 24);
            pictures.insert(headless::framebufferPicture(270, 400).rgba);
        }
        EXPECT_EQ(pictures.size(), values) << parameter.name;
    }
}

// Columns are opaque and half transparent by turns: the middle is kept at its scale, and the ends are cut.
TEST(Background, CoverFitCutsTheEndsAveragesAndLaysOverBlack) {
    Picture source(300, 100);
    for (int i = 0; i < 300 * 100; ++i) {
        std::uint8_t* pixel = source.pixel(i / 100, i % 100);
        pixel[i / 10000] = 200;
        pixel[3] = i % 2 == 0 ? 255 : 127;
    }
    for (const int side : {25, 333}) {
        const Picture square = coverFit(source, side, side);
        double means[4] = {};
        for (std::size_t i = 0; i < square.rgba.size(); ++i)
            means[i % 4] += 1.0 * square.rgba[i] / (side * side);
        EXPECT_THAT(means, testing::ElementsAre(Lt(2), DoubleNear(150, 2), Lt(2), DoubleNear(255, 1e-3))) << side;
    }
}

} // namespace tidalume::gallery
