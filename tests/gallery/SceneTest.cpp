#include "gallery/Background.h"
#include "gallery/SceneTable.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <ostream>

namespace tidalume::gallery {

void PrintTo(const SceneEntry& entry, std::ostream* stream) {
    *stream << entry.name;
}

namespace {

using headless::HeadlessContext;

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
}

void expectDrawing(int width, int height) {
    const Picture picture = headless::framebufferPicture(width, height);
    const std::uint8_t* first = picture.pixel(0, 0);
    int differing = 0;
    for (std::size_t i = 0; i < picture.rgba.size(); i += 4) {
        if (!std::equal(first, first + 3, picture.rgba.data() + i)) ++differing;
    }
    EXPECT_GT(differing, width * height / 4) << "the picture is all but empty";
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

class EveryScene : public testing::TestWithParam<SceneEntry> {};

} // namespace

TEST_P(EveryScene, DrawsThroughResizesAndContextLosses) {
    HeadlessContext context(97, 161);
    const auto scene = start(GetParam(), 97, 161);
    drawFrames(*scene, 0, 20);
    expectDrawing(97, 161);
    for (const auto& [width, height] : {std::pair(160, 64), std::pair(1, 1), std::pair(64, 160)}) {
        context.resize(width, height);
        scene->setUp(width, height, pebbles(width, height, 7));
        drawFrames(*scene, 20, 24);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
    expectDrawing(64, 160);
    for (int loss = 0; loss < 2; ++loss) {
        scene->contextLost();
        context.recreate();
        scene->setUp(64, 160, pebbles(64, 160, 7));
        drawFrames(*scene, 24, 40);
        expectDrawing(64, 160);
    }
}

TEST_P(EveryScene, TakesEverySettingAndAnyTouch) {
    const HeadlessContext context(64, 96);
    const auto scene = start(GetParam(), 64, 96);
    scene->set("no such setting", 1);
    for (const Parameter& parameter : scene->parameters()) {
        for (const float value : {parameter.minimum, parameter.maximum, -1e9F, 1e9F, parameter.initial}) {
            scene->set(parameter.name, value);
            drawFrames(*scene, 0, 2);
        }
    }
    for (const int pointer : {-1, 0, pointerCount - 1, pointerCount, 1000}) {
        scene->touch({-500, 1e6F, TouchAction::Down, pointer});
        scene->touch({32, 48, TouchAction::Move, pointer});
        drawFrames(*scene, 60, 64);
        scene->touch({32, 48, TouchAction::Up, pointer});
    }
    drawFrames(*scene, 0, 20);
    expectDrawing(64, 96);
}

INSTANTIATE_TEST_SUITE_P(Table, EveryScene, testing::ValuesIn(sceneTable()),
                         [](const auto& info) { return std::string(info.param.name); });

// Columns of a wide source and rows of a tall one: the middle is kept at its scale and the ends are cut.
TEST(Background, CoverFitKeepsTheMiddle) {
    for (const bool wide : {true, false}) {
        Picture source = wide ? Picture(300, 100) : Picture(100, 300);
        for (int y = 0; y < source.height; ++y) {
            for (int x = 0; x < source.width; ++x) {
                const int along = wide ? x : y;
                std::uint8_t* pixel = source.pixel(x, y);
                pixel[along < 100 ? 0 : along < 200 ? 1 : 2] = 200;
                pixel[3] = 255;
            }
        }
        for (const int side : {25, 100, 333}) {
            const Picture square = coverFit(source, side, side);
            for (const int at : {2, side / 2, side - 3}) {
                const std::uint8_t* pixel = wide ? square.pixel(at, side / 2) : square.pixel(side / 2, at);
                EXPECT_EQ(pixel[1], 200) << side << " " << at;
                EXPECT_EQ(pixel[0] + pixel[2], 0) << side << " " << at;
            }
        }
    }
}

TEST(Background, CoverFitAveragesAndLaysOverBlack) {
    Picture checkers(64, 64);
    for (int i = 0; i < 64 * 64; ++i) {
        std::uint8_t* pixel = checkers.pixel(i % 64, i / 64);
        pixel[0] = (i / 64 + i) % 2 == 0 ? 255 : 0;
        pixel[2] = 255;
        pixel[3] = 128;
    }
    const Picture small = coverFit(checkers, 8, 8);
    EXPECT_NEAR(small.pixel(4, 4)[0], 64, 2) << "half of red, half transparent";
    EXPECT_NEAR(small.pixel(4, 4)[2], 128, 1);
    EXPECT_EQ(small.pixel(0, 0)[3], 255);
}

} // namespace tidalume::gallery
