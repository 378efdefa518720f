#include "gallery/scenes/PondScene.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

// In texels of a height field at the default resolution.
constexpr float dropRadius = 7;
constexpr float dropDistance = 30; // between the drops of a moving finger
constexpr float steepness = 15;
constexpr float depth = 20;

} // namespace

PondScene::PondScene() {
    mParameters = {
        {"radius", "Size of a drop", 0.4F, 3, mRadius},
        {"strength", "Strength of a drop", 0.1F, 0.95F, mStrength},
        {"updates", "Updates per frame", 1, 16, mUpdates},
        {"depth", "Depth of the water", 0, 3, mDepth},
        mSurface.resolution(),
    };
}

void PondScene::setUp(int width, int height, const Picture& background) {
    mWidth = width;
    mHeight = height;
    mSurface.setUp(width, height, background);
    mPond.init();
    mSurface.fitField(mPond);
}

void PondScene::contextLost() {
    mPond.GLContextDestroyed();
    mSurface.contextLost();
}

// Every drop halts the rings for a moment, which then run both outwards and inwards. A moving finger therefore leaves
// space between its drops.
void PondScene::touch(const Touch& touch) {
    if (touch.action == TouchAction::Up) return;
    Finger& finger = mFingers[static_cast<std::size_t>(touch.pointer)];
    const float distance = std::hypot(mSurface.toColumn(touch.x - finger.x), mSurface.toRow(touch.y - finger.y));
    if (touch.action == TouchAction::Move && distance < dropDistance * mSurface.scale()) return;
    finger = {touch.x, touch.y, true};
}

void PondScene::drawFrame() {
    mSurface.fitField(mPond);
    const auto columns = static_cast<float>(mSurface.columns());
    const auto rows = static_cast<float>(mSurface.rows());
    // A drop is an ellipse on a screen that is not square. The mean of its two radii is the one that is set.
    const float radius = 4 * dropRadius * mRadius * mSurface.scale() / (columns + rows);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    for (Finger& finger : mFingers) {
        if (!finger.drops) continue;
        float center[2] = {2 * mSurface.toColumn(finger.x) / columns - 1, 1 - 2 * mSurface.toRow(finger.y) / rows};
        mPond.addDropLine(center, center, radius, mStrength);
        finger.drops = false;
    }
    const auto updates = std::lround(mUpdates);
    for (long i = 0; i < updates; ++i)
        mPond.update();
    mSurface.draw(mPond.getTexture(), steepness * mSurface.scale(), depth * mDepth * mSurface.scale());
}

std::vector<Touch> PondScene::demonstration(int frame) const {
    constexpr int period = 120;
    struct Drop {
        int frame;
        float x, y;
    };
    constexpr Drop drops[] = {{1, 0.36F, 0.34F}, {45, 0.70F, 0.58F}, {84, 0.30F, 0.76F}, {104, 0.64F, 0.24F}};
    for (const Drop& drop : drops) {
        if (drop.frame == frame % period) {
            return {{drop.x * static_cast<float>(mWidth), drop.y * static_cast<float>(mHeight), TouchAction::Down}};
        }
    }
    return {};
}

} // namespace tidalume::gallery
