#include "gallery/Background.h"
#include "gallery/Blend.h"
#include "gallery/Ground.h"
#include "gallery/Player.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "tests/support/LiveNames.h"
#include "tests/support/Pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <malloc.h>
#include <set>
#include <unistd.h>

namespace tidalume::gallery {

void PrintTo(const SceneEntry& entry, std::ostream* stream) {
    *stream << entry.name;
}

namespace {

using namespace testing;

constexpr int width = 96;
constexpr int height = 160;

/// Resident memory in KiB, without the free blocks of the allocator. Comparable where a context is new: later the
/// driver holds what it has not drawn yet.
long residentMemory() {
    malloc_trim(0);
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

/// Whether a live texture holds a value that is not a number. A field of metaballs reaches 120 pixels beyond the screen
/// on every side.
bool holdsNaN() {
    for (const GLuint name : liveNames(glIsTexture)) {
        const std::vector<float> values = headless::readTexture(name, width + 240, height + 240).rgba;
        if (std::any_of(values.begin(), values.end(), [](float value) { return std::isnan(value); })) return true;
    }
    return false;
}

class EveryScene : public testing::TestWithParam<SceneEntry> {
  protected:
    EveryScene() { setUp(width, height); }

    void setUp(int newWidth, int newHeight) {
        context.resize(newWidth, newHeight);
        player.setUp(newWidth, newHeight, makeBackground({}, GetParam().ground, newWidth, newHeight));
    }

    void loseContext() {
        player.contextLost();
        context.recreate();
        setUp(width, height);
    }

    void drawFrames(int count) {
        for (int i = 0; i < count; ++i)
            player.drawStep();
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }

    headless::HeadlessContext context{width, height};
    Player player{GetParam(), 7};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Table, EveryScene, testing::ValuesIn(sceneTable()), testing::PrintToStringParamName());

/// Loses the context in the middle of every 500 frames. TIDALUME_SOAK_FRAMES says how many frames there are.
TEST_P(EveryScene, StaysFlatForManyFrames) {
    const char* given = std::getenv("TIDALUME_SOAK_FRAMES");
    const int frames = given ? std::atoi(given) : 500;
    constexpr int settledFrame = 1000;
    if (frames > settledFrame) {
        // Mesa holds some memory for each of the first contexts of a process (six on llvmpipe), but not for later ones.
        for (int i = 0; i < 12; ++i) {
            drawFrames(1);
            loseContext();
        }
    }
    std::set<size_t> counts;
    long settledMemory = 0;
    for (int frame = 50; frame <= frames; frame += 50) {
        drawFrames(25);
        setUp(width, height); // as for another size: what was there is used or deleted
        drawFrames(25);
        counts.insert(liveObjects());
        if (frame % 250 == 0) {
            ASSERT_FALSE(holdsNaN()) << "at frame " << frame;
        }
        if (frame % 500 != 250) continue;
        loseContext();
        if (frame > settledFrame && settledMemory == 0) settledMemory = residentMemory();
    }
    const Picture picture = headless::framebufferPicture(width, height);
    const std::set<std::uint8_t> values(picture.rgba.begin(), picture.rgba.end());
    EXPECT_GT(values.size(), 64U) << "the picture is almost empty";
    EXPECT_THAT(counts, ElementsAre(Gt(0)));
    if (frames <= settledFrame) return;
    loseContext();
    const long growth = residentMemory() - settledMemory;
    std::cout << "Resident memory grew by " << growth << " KiB after frame " << settledFrame << "\n";
    EXPECT_LE(growth, 1024);
}

Player playerOf(const SceneEntry& entry = sceneTable()[3]) {
    Player player(entry, 1);
    player.setUp(width, height, {});
    return player;
}

/// The last of so many frames of a scene of which a finger lifts before one.
Picture lastFrame(int touchedAt, int frames, int finger = 9, const SceneEntry& entry = sceneTable()[3]) {
    const headless::HeadlessContext context(width, height);
    Player player = playerOf(entry);
    for (int frame = 0; frame < frames; ++frame) {
        if (frame == touchedAt) player.touch({0, 0, TouchPhase::Up, finger});
        player.drawStep();
    }
    return headless::framebufferPicture(width, height);
}

/// In steps of 8 bits.
double meanDifference(const Picture& one, const Picture& other) {
    double sum = 0;
    for (std::size_t i = 0; i < one.rgba.size(); ++i)
        sum += std::abs(one.rgba[i] - other.rgba[i]);
    return sum / static_cast<double>(one.rgba.size());
}

TEST(Grounds, AreOneOpaquePictureEachAtEverySize) {
    std::set<std::vector<std::uint8_t>> pictures;
    std::vector<std::string> withChance;
    for (const Ground& ground : groundTable()) {
        for (const auto& [width, height] : {std::pair(1, 1), {1, 97}, {4096, 3}, {67, 45}}) {
            const Picture picture = ground.draw(width, height, 7);
            ASSERT_EQ(std::pair(picture.width, picture.height), std::pair(width, height)) << ground.name;
            for (std::size_t i = 3; i < picture.rgba.size(); i += 4)
                ASSERT_EQ(picture.rgba[i], 255) << ground.name;
        }
        const Picture small = ground.draw(90, 160, 1);
        EXPECT_LT(meanDifference(small, coverFit(ground.draw(360, 640, 1), 90, 160)), 1.5) << ground.name;
        EXPECT_EQ(difference(ground.draw(90, 160, 1), small), "") << ground.name;
        if (ground.draw(90, 160, 2).rgba != small.rgba) withChance.emplace_back(ground.name);
        pictures.insert(small.rgba);
    }
    EXPECT_EQ(pictures.size(), groundTable().size());
    EXPECT_THAT(withChance, ElementsAre("sand", "tiles", "pebbles", "night"));
}

TEST(Player, BeginsWithThePresetOfItsScene) {
    for (const SceneEntry& entry : sceneTable()) {
        const Player begun(entry, 1);
        Player set(entry, 1);
        set.usePreset(entry.preset);
        for (int i = 0; i < static_cast<int>(begun.parameters().size); ++i)
            EXPECT_EQ(begun.get(i), set.get(i)) << entry.name << ": parameter " << i;
    }
}

// A display's frames come a little early or late; a slow machine's come much too late.
TEST(Player, StepsFollowTime) {
    const headless::HeadlessContext context(width, height);
    Player player = playerOf();
    constexpr double step = 1.0 / 60;
    std::vector<int> steps;
    for (const double seconds :
         {step - 0.004, step + 0.004, step - 0.004, 0.2, 0.2, 3600.0, 0.0, step, 2 * step, 3 * step})
        steps.push_back(player.advance(seconds));
    EXPECT_THAT(steps, ElementsAre(1, 1, 1, 1, 1, 1, 0, 1, 2, 1));
}

TEST(Player, TheFirstTouchEndsTheDemonstration) {
    EXPECT_NE(difference(lastFrame(0, 60), lastFrame(60, 60)), "");
    EXPECT_EQ(difference(lastFrame(0, 60, pointerCount), lastFrame(60, 60)), "") << "nobody has eleven fingers";
    EXPECT_EQ(difference(lastFrame(0, 100), lastFrame(60, 100)), "") << "the demonstration's finger is lifted";
}

// As the finger that demonstrates it does.
TEST(VectorScene, ComesRoundInFourSeconds) {
    const SceneEntry& vector = sceneTable().back();
    EXPECT_EQ(difference(lastFrame(0, 241, 9, vector), lastFrame(0, 1, 9, vector), 8), "");
    EXPECT_NE(difference(lastFrame(0, 121, 9, vector), lastFrame(0, 1, 9, vector), 8), "");
}

// One pixel of 100 below a colour of 200, 50 and 0 that covers half of it.
TEST(Blend, FollowsItsFormula) {
    const headless::HeadlessContext context(1, 1);
    VectorGraphicRenderer graphics;
    graphics.init();
    graphics.setScreenSize(1, 1);
    const std::pair<Blend, std::vector<std::uint8_t>> rows[] = {
        {Blend::Over, {150, 75, 50, 255}},      {Blend::Add, {200, 125, 100, 255}},
        {Blend::Multiply, {78, 20, 0, 255}},    {Blend::Screen, {222, 130, 100, 255}},
        {Blend::Lighten, {200, 100, 100, 255}}, {Blend::Subtract, {0, 75, 100, 255}},
    };
    Picture expected(1, 1);
    for (const auto& [blend, pixel] : rows) {
        glClearColor(100 / 255.0F, 100 / 255.0F, 100 / 255.0F, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        setBlend(graphics, blend);
        float color[] = {200 / 255.0F, 50 / 255.0F, 0, 0.5F};
        graphics.renderCircle(0, 0, 9, color);
        expected.rgba = pixel;
        EXPECT_EQ(difference(headless::framebufferPicture(1, 1), expected, 1), "")
            << blendNames[static_cast<int>(blend)];
    }
}

// The source has three areas side by side, of which the middle one is kept. Its rows are opaque and half transparent
// by turns.
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
        EXPECT_THAT(means, ElementsAre(Lt(2), DoubleNear(150, 2), Lt(2), DoubleNear(255, 1e-3))) << side;
    }
}

} // namespace tidalume::gallery
