#include "gallery/Background.h"
#include "gallery/SceneTable.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <malloc.h>
#include <unistd.h>

namespace tidalume::gallery {
namespace {

constexpr int width = 96;
constexpr int height = 160;
constexpr GLuint highestName = 500;
constexpr int framesPerContext = 500;
/// Mesa keeps some memory for each of the first contexts of a process, six on llvmpipe, and no more for later ones.
constexpr int warmUpContexts = 12;
constexpr int settledFrame = 1000;
constexpr long allowedGrowth = 1024;

/// Resident memory in KiB, without what the allocator keeps for later. Comparable where a context has just begun:
/// within a context the driver gathers what it has not drawn yet.
long residentMemory() {
    malloc_trim(0);
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

int liveNames() {
    int live = 0;
    for (GLuint name = 1; name <= highestName; ++name)
        live += glIsTexture(name) + glIsFramebuffer(name) + glIsProgram(name) + glIsShader(name) + glIsBuffer(name);
    return live;
}

/// Whether a live texture holds a value that is not a number. A field of metaballs reaches 120 pixels beyond the screen
/// on every side.
bool holdsNaN() {
    for (GLuint name = 1; name <= highestName; ++name) {
        if (!glIsTexture(name)) continue;
        const std::vector<float> values = headless::readTexture(name, width + 240, height + 240).rgba;
        if (std::any_of(values.begin(), values.end(), [](float value) { return std::isnan(value); })) return true;
    }
    return false;
}

class Soak : public testing::TestWithParam<SceneEntry> {};

/// Loses the context in the middle of every 500 frames. TIDALUME_SOAK_FRAMES says how many frames there are.
TEST_P(Soak, StaysFlat) {
    const char* given = std::getenv("TIDALUME_SOAK_FRAMES");
    const int frames = given ? std::atoi(given) : framesPerContext;
    headless::HeadlessContext context(width, height);
    const Picture background = pebbles(width, height, 7);
    srand48(7);
    const std::unique_ptr<Scene> scene = GetParam().make();
    scene->setUp(width, height, background);

    const auto drawFrame = [&](int frame) {
        for (const Touch& touch : scene->demonstration(frame))
            scene->touch(touch);
        scene->drawFrame();
    };
    const auto loseContext = [&] {
        scene->contextLost();
        context.recreate();
        scene->setUp(width, height, background);
    };
    for (int i = 0; frames > settledFrame && i < warmUpContexts; ++i) {
        drawFrame(i);
        loseContext();
    }

    int names = 0;
    long settled = 0;
    for (int frame = 0; frame < frames; ++frame) {
        drawFrame(frame);
        if ((frame + 1) % 50 == 0) {
            if (names == 0) names = liveNames();
            ASSERT_EQ(liveNames(), names) << "at frame " << frame;
        }
        if ((frame + 1) % (framesPerContext / 2) != 0) continue;

        ASSERT_FALSE(holdsNaN()) << "at frame " << frame;
        ASSERT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "at frame " << frame;
        if ((frame + 1) % framesPerContext == 0) continue;
        loseContext();
        if (frame > settledFrame && settled == 0) settled = residentMemory();
    }
    if (frames <= settledFrame) return;
    loseContext();
    const long growth = residentMemory() - settled;
    std::cout << GetParam().name << ": resident memory grew by " << growth << " KiB after frame " << settledFrame
              << "\n";
    EXPECT_LE(growth, allowedGrowth);
}

INSTANTIATE_TEST_SUITE_P(Table, Soak, testing::ValuesIn(sceneTable()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace tidalume::gallery
