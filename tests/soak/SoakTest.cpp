#include "gallery/Background.h"
#include "gallery/SceneTable.h"
#include "headless/HeadlessContext.h"
#include "headless/Pixels.h"
#include "tests/soak/AllocationCount.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <malloc.h>
#include <ostream>
#include <unistd.h>

namespace tidalume::gallery {

void PrintTo(const SceneEntry& entry, std::ostream* stream) {
    *stream << entry.name;
}

namespace {

constexpr int width = 96;
constexpr int height = 160;
/// A field of metaballs reaches 120 pixels beyond the screen on every side.
constexpr int largestWidth = width + 240;
constexpr int largestHeight = height + 240;
constexpr GLuint highestName = 500;
constexpr int framesPerContext = 500;
/// Mesa keeps some memory for each of the first contexts of a process, six on llvmpipe, and no more for later ones.
constexpr int warmUpContexts = 12;
constexpr int warmUpFrames = 4;
constexpr int settledFrame = 1000;
constexpr long allowedGrowth = 1024;

/// TIDALUME_SOAK_FRAMES, or as many as one context lives for.
int frameCount() {
    const char* given = std::getenv("TIDALUME_SOAK_FRAMES");
    return given ? std::atoi(given) : framesPerContext;
}

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
    for (GLuint name = 1; name <= highestName; ++name) {
        live += glIsTexture(name) + glIsFramebuffer(name) + glIsProgram(name) + glIsShader(name) + glIsBuffer(name);
    }
    return live;
}

/// Whether a live texture holds a value that is not a number.
bool holdsNaN() {
    for (GLuint name = 1; name <= highestName; ++name) {
        if (!glIsTexture(name)) continue;
        const headless::PixelArray pixels = headless::readTexture(name, largestWidth, largestHeight);
        if (std::any_of(pixels.rgba.begin(), pixels.rgba.end(), [](float value) { return std::isnan(value); })) {
            return true;
        }
    }
    return false;
}

/// The particle array doubles, from one particle of six floats on.
bool isParticleArray(std::size_t size) {
    const std::size_t particles = size / 24;
    return size % 24 == 0 && particles > 0 && (particles & (particles - 1)) == 0;
}

class Soak : public testing::TestWithParam<SceneEntry> {};

TEST_P(Soak, StaysFlat) {
    const int frames = frameCount();
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
        for (int frame = 0; frame < warmUpFrames; ++frame)
            drawFrame(frame);
        loseContext();
    }

    int names = 0;
    long settled = 0;
    for (int frame = 0; frame < frames; ++frame) {
        const int frameOfContext = (frame + 1) % framesPerContext;
        if (frameOfContext == framesPerContext / 2) {
            if (names == 0) names = liveNames();
            ASSERT_EQ(liveNames(), names) << "in each context, at frame " << frame;
        } else if (frameOfContext == 0) {
            ASSERT_EQ(liveNames(), names) << "before frame " << frame;
            ASSERT_FALSE(holdsNaN()) << "before frame " << frame;
            loseContext();
            if (frame + 1 == settledFrame) settled = residentMemory();
        }
        startCountingAllocations();
        drawFrame(frame);
        std::vector<std::size_t> allocations = stopCountingAllocations();
        allocations.erase(std::remove_if(allocations.begin(), allocations.end(), isParticleArray), allocations.end());
        ASSERT_TRUE(allocations.empty()) << allocations.front() << " bytes in frame " << frame;
    }
    EXPECT_FALSE(holdsNaN());
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
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
