#include "gallery/Player.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace tidalume::gallery {

namespace {

/// Draws nothing, counts its frames and keeps its touches. Its demonstration holds finger 2 down from frame 1 on.
class CountingScene : public Scene {
  public:
    static int frames;
    static std::vector<Touch> touches;

    CountingScene() {
        frames = 0;
        touches.clear();
    }
    void setUp(int, int, const Picture&) override {}
    void contextLost() override {}
    void touch(const Touch& touch) override { touches.push_back(touch); }
    void drawFrame() override { ++frames; }
    std::vector<Touch> demonstration(int frame) const override {
        if (frame == 0) return {};
        return {{7, 8, frame == 1 ? TouchAction::Down : TouchAction::Move, 2}};
    }
    const std::vector<Parameter>& parameters() const override {
        static const std::vector<Parameter> none;
        return none;
    }
    void set(std::string_view, float) override {}
};

int CountingScene::frames = 0;
std::vector<Touch> CountingScene::touches;

const SceneEntry counting = {"counting", "", "",
                             []() -> std::unique_ptr<Scene> { return std::make_unique<CountingScene>(); }};

} // namespace

TEST(Player, StepsFollowTimeWhateverTheRefreshRate) {
    for (const double rate : {30.0, 50.0, 60.0, 75.0, 144.0, 240.0}) {
        Player player(counting, 1);
        int most = 0;
        for (int i = 0; i < static_cast<int>(10 * rate); ++i)
            most = std::max(most, player.advance(1 / rate));
        EXPECT_NEAR(CountingScene::frames, 600, 1) << rate << " Hz";
        EXPECT_EQ(most, rate < 60 ? 2 : 1) << rate << " Hz";
    }
}

TEST(Player, OneStepForEachFrameOfADisplayThatJitters) {
    Player player(counting, 1);
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(player.advance(Player::step + (i % 2 == 0 ? 0.004 : -0.004)), 1) << i;
}

TEST(Player, SlowsDownInsteadOfFallingBehind) {
    Player player(counting, 1);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(player.advance(0.2), 1);
    EXPECT_EQ(player.advance(3600), 1) << "after a night's sleep";
    EXPECT_EQ(player.advance(0), 0);
    EXPECT_EQ(player.advance(Player::step), 1);
}

TEST(Player, TheFirstTouchEndsTheDemonstration) {
    Player player(counting, 1);
    for (int i = 0; i < 3; ++i)
        player.drawStep();
    ASSERT_EQ(CountingScene::touches.size(), 2U);
    player.touch({1, 2, TouchAction::Down, pointerCount});
    EXPECT_EQ(CountingScene::touches.size(), 2U) << "nobody has eleven fingers here";

    player.touch({1, 2, TouchAction::Down, 0});
    ASSERT_EQ(CountingScene::touches.size(), 4U);
    const Touch lifted = CountingScene::touches[2];
    EXPECT_EQ(lifted.action, TouchAction::Up);
    EXPECT_EQ(lifted.pointer, 2);
    EXPECT_EQ(lifted.x, 7);
    EXPECT_EQ(CountingScene::touches[3].pointer, 0);
    player.drawStep();
    EXPECT_EQ(CountingScene::touches.size(), 4U);
}

} // namespace tidalume::gallery
