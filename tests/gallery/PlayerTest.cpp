#include "gallery/Player.h"

#include <gmock/gmock.h>

namespace tidalume::gallery {

namespace {

std::vector<std::pair<TouchAction, int>> touches;

/// Keeps its touches. Its demonstration holds finger 2 down.
class TouchedScene : public Scene {
    void setUp(int, int, const Picture&) override {}
    void contextLost() override {}
    void touch(const Touch& touch) override { touches.emplace_back(touch.action, touch.pointer); }
    void drawFrame() override {}
    std::vector<Touch> demonstration(int) const override { return {{7, 8, TouchAction::Down, 2}}; }
};

const SceneEntry touched = {"", "", "", false,
                            []() -> std::unique_ptr<Scene> { return std::make_unique<TouchedScene>(); }};

} // namespace

// A display's frames come a little early or late; a slow machine's come much too late.
TEST(Player, StepsFollowTime) {
    for (const double rate : {50.0, 144.0}) {
        Player player(touched, 1);
        int steps = 0;
        for (int i = 0; i < 10 * rate; ++i)
            steps += player.advance(1 / rate);
        EXPECT_NEAR(steps, 600, 1) << rate << " Hz";
    }
    Player player(touched, 1);
    const double step = Player::step;
    std::vector<int> steps;
    for (const double seconds :
         {step - 0.004, step + 0.004, step - 0.004, 0.2, 0.2, 3600.0, 0.0, step, 2 * step, 3 * step})
        steps.push_back(player.advance(seconds));
    EXPECT_THAT(steps, testing::ElementsAre(1, 1, 1, 1, 1, 1, 0, 1, 2, 1));
}

TEST(Player, TheFirstTouchEndsTheDemonstration) {
    touches.clear();
    Player player(touched, 1);
    player.drawStep();
    player.touch({1, 2, TouchAction::Down, pointerCount}); // nobody has eleven fingers
    player.drawStep();
    player.touch({1, 2, TouchAction::Down, 0});
    player.drawStep();
    const std::vector<std::pair<TouchAction, int>> expected = {
        {TouchAction::Down, 2}, {TouchAction::Down, 2}, {TouchAction::Up, 2}, {TouchAction::Down, 0}};
    EXPECT_EQ(touches, expected);
}

} // namespace tidalume::gallery
