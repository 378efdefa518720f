#include "gallery/scenes/WaterScene.h"

#include "gallery/Math.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tidalume::gallery {

namespace {

// In texels of a height field at the default resolution.
constexpr float dropRadius = 8;
constexpr float dropStrength = 1.1F;
constexpr float strokeStrength = 0.08F; // per frame, while the finger moves
constexpr float steepness = 36;
constexpr float depth = 19;

} // namespace

WaterScene::WaterScene() {
    mParameters = {
        {"radius", "Width of a finger", 0.4F, 3, mRadius},
        {"strength", "Strength of a touch", 0.1F, 3, mStrength},
        {"iterations", "Iterations per frame", 1, 8, mIterations},
        {"depth", "Depth of the water", 0, 3, mDepth},
        mSurface.resolution(),
    };
}

void WaterScene::setUp(int width, int height, const Picture& background) {
    mWidth = width;
    mHeight = height;
    mSurface.setUp(width, height, background);
    mWater.init();
    mSurface.fitField(mWater);
}

void WaterScene::contextLost() {
    mWater.GLContextDestroyed();
    mSurface.contextLost();
}

void WaterScene::touch(const Touch& touch) {
    if (touch.action == TouchAction::Up) return;
    Finger& finger = mFingers[static_cast<std::size_t>(touch.pointer)];
    finger.to[0] = touch.x;
    finger.to[1] = touch.y;
    if (touch.action == TouchAction::Down) {
        std::copy(std::begin(finger.to), std::end(finger.to), finger.from);
        finger.isNew = true;
    }
    finger.moved = true;
}

void WaterScene::drawFrame() {
    mSurface.fitField(mWater);
    disturb();
    mWater.setIterationCount(static_cast<int>(std::lround(mIterations)));
    mWater.update();
    mSurface.draw(mWater.getTexture(), steepness * mSurface.scale(), depth * mDepth * mSurface.scale());
}

// A line from the last position of each finger to the present one leaves no gap, however fast the finger is.
void WaterScene::disturb() {
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    for (Finger& finger : mFingers) {
        if (!finger.moved) continue;
        const float strength = finger.isNew ? dropStrength : strokeStrength;
        float from[2] = {mSurface.toColumn(finger.from[0]), mSurface.toRow(finger.from[1])};
        float to[2] = {mSurface.toColumn(finger.to[0]), mSurface.toRow(finger.to[1])};
        mWater.addDropLine(from, to, dropRadius * mRadius * mSurface.scale(), strength * mStrength, 1);
        std::copy(std::begin(finger.to), std::end(finger.to), finger.from);
        finger.moved = finger.isNew = false;
    }
}

// Drops fall for two seconds, while a finger is drawn in an arc across the screen.
std::vector<Touch> WaterScene::demonstration(int frame) const {
    constexpr int period = 120;
    constexpr int strokeBegin = 52;
    constexpr int strokeEnd = 112;
    struct Drop {
        int frame;
        float x, y;
    };
    constexpr Drop drops[] = {{6, 0.30F, 0.25F},  {22, 0.72F, 0.68F}, {40, 0.24F, 0.82F}, {62, 0.74F, 0.20F},
                              {80, 0.22F, 0.26F}, {92, 0.70F, 0.84F}, {99, 0.56F, 0.16F}, {106, 0.24F, 0.84F}};

    const auto width = static_cast<float>(mWidth);
    const auto height = static_cast<float>(mHeight);
    const int step = frame % period;
    std::vector<Touch> touches;
    for (const Drop& drop : drops) {
        if (drop.frame == step) touches.push_back({drop.x * width, drop.y * height, TouchAction::Down, 1});
    }
    if (step >= strokeBegin && step <= strokeEnd) {
        const float t = static_cast<float>(step - strokeBegin) / (strokeEnd - strokeBegin);
        const float x = width * (0.12F + 0.76F * t);
        const float y = height * (0.62F + 0.13F * std::sin(twoPi * t));
        touches.push_back({x, y, step == strokeBegin ? TouchAction::Down : TouchAction::Move, 0});
    }
    return touches;
}

} // namespace tidalume::gallery
