#include "gallery/Player.h"

#include <gtest/gtest.h>

namespace tidalume::gallery {

namespace {

int frames = 0;
std::vector<Touch> touches;

/// Draws nothing, counts its frames and keeps its touches. Its demonstration holds finger 2 down.
class CountingScene : public Scene {
  public:
    CountingScene() {
        frames = 0;
        touches.clear();
    }
    void setUp(int, int, const Picture&) override {}
    void contextLost() override {}
    void touch(const Touch& touch) override { touches.push_back(touch); }
    void drawFrame() override { ++frames; }
    std::vector<Touch> demonstration(int) const override { return {{7, 8, TouchAction::Down, 2}}; }
};

const SceneEntry counting = {"", "", "", false,
                             []() -> std::unique_ptr<Scene> { return std::make_unique<CountingScene>(); }};

} // namespace

TEST(Player, StepsFollowTimeWhateverTheRefreshRate) {
    for (const double rate : {50.0, 144.0}) {
        Player player(counting, 1);
        for (int i = 0; i < 10 * rate; ++i)
            player.advance(1 / rate);
        EXPECT_NEAR(frames, 600, 1) << rate << " Hz";
    }
    Player player(counting, 1);
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(player.advance(Player::step + (i % 2 == 0 ? -0.004 : 0.004)), 1) << "jitter, " << i;
}

TEST(Player, SlowsDownInsteadOfFallingBehind) {
    Player player(counting, 1);
    for (const auto& [seconds, steps] : {std::pair(0.2, 1), {0.2, 1}, {3600.0, 1}, {0.0, 0}, {Player::step, 1}})
        EXPECT_EQ(player.advance(seconds), steps) << seconds;
}

TEST(Player, TheFirstTouchEndsTheDemonstration) {
    Player player(counting, 1);
    player.drawStep();
    player.touch({1, 2, TouchAction::Down, pointerCount});
    ASSERT_EQ(touches.size(), 1U) << "nobody has eleven fingers here";

    player.touch({1, 2, TouchAction::Down, 0});
    player.drawStep();
    ASSERT_EQ(touches.size(), 3U);
    EXPECT_EQ(touches[1].action, TouchAction::Up);
    EXPECT_EQ(touches[1].pointer, 2);
    EXPECT_EQ(touches[2].pointer, 0);
}

} // namespace tidalume::gallery
