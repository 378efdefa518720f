#include "gallery/Background.h"
#include "gallery/Player.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <gmock/gmock.h>
#include <set>

namespace tidalume::gallery {

namespace {

using headless::HeadlessContext;
using testing::DoubleNear;
using testing::Lt;

void drawFrames(Player& player, int count) {
    for (int i = 0; i < count; ++i)
        player.drawStep();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

void expectDrawing(int width, int height) {
    const Picture picture = headless::framebufferPicture(width, height);
    const std::set<std::uint8_t> values(picture.rgba.begin(), picture.rgba.end());
    EXPECT_GT(values.size(), 64U) << "the picture is all but empty";
}

class EveryScene : public testing::TestWithParam<SceneEntry> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Table, EveryScene, testing::ValuesIn(sceneTable()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(EveryScene, DrawsThroughResizesContextLossesAndAnyTouch) {
    HeadlessContext context(97, 161);
    Player player(GetParam(), 7);
    player.setUp(97, 161, pebbles(97, 161, 7));
    drawFrames(player, 20);
    expectDrawing(97, 161);
    for (const auto& [width, height, isLost] :
         {std::tuple(1, 1, false), {64, 160, false}, {64, 160, true}, {64, 160, true}}) {
        if (isLost) {
            player.contextLost();
            context.recreate();
        }
        context.resize(width, height);
        player.setUp(width, height, pebbles(width, height, 7));
        drawFrames(player, 10);
    }
    expectDrawing(64, 160);
    for (const TouchAction action : {TouchAction::Down, TouchAction::Move, TouchAction::Up}) {
        for (const int pointer : {-1, 0, 9, 10})
            player.touch({-500, 1e6F, action, pointer});
        drawFrames(player, 4);
    }
    expectDrawing(64, 160);
}

// Particles are too large to be told apart on a smaller screen.
TEST_P(EveryScene, ShowsEverySetting) {
    const HeadlessContext context(270, 400);
    const Player listed(GetParam(), 7);
    for (const Parameter& parameter : listed.parameters()) {
        const float step = parameter.choices.empty() ? 0.4F * (parameter.maximum - parameter.minimum) : 1;
        std::set<std::vector<std::uint8_t>> pictures;
        std::size_t values = 0;
        for (float value = parameter.minimum; value <= parameter.maximum; value += step, ++values) {
            Player player(GetParam(), 7);
            player.setUp(270, 400, pebbles(270, 400, 7));
            player.set(parameter.name, value);
            drawFrames(player, 24);
            pictures.insert(headless::framebufferPicture(270, 400).rgba);
        }
        EXPECT_EQ(pictures.size(), values) << parameter.name;
    }
}

// Columns are opaque and half transparent by turns, in colours that lie side by side: the middle is kept, and the ends
// are cut.
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
