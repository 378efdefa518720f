#include "gallery/Player.h"

#include <cstdlib>

namespace tidalume::gallery {

namespace {

// Half a step ahead, so that a display of 60 Hz whose frames come a little early or late gets one step for each.
constexpr double headStart = Player::timeStep / 2;

std::unique_ptr<Scene> makeScene(const SceneEntry& entry, std::uint32_t seed) {
    srand48(static_cast<long>(seed));
    std::unique_ptr<Scene> scene = entry.make();
    scene->usePreset(entry.preset);
    return scene;
}

} // namespace

Player::Player(const SceneEntry& entry, std::uint32_t seed)
    : mScene(makeScene(entry, seed)), mDemonstration(entry.demonstration), mDue(headStart) {}

void Player::setUp(int width, int height, const Picture& background) {
    mWidth = static_cast<float>(width);
    mHeight = static_cast<float>(height);
    mScene->setUp(width, height, background);
}

void Player::touch(const Touch& touch) {
    if (touch.pointer < 0 || touch.pointer >= pointerCount) return;
    endDemonstration();
    mScene->touch(touch);
}

int Player::advance(double seconds) {
    mDue += seconds;
    int steps = 0;
    if (mDue >= (maxSteps + 1) * timeStep) {
        mDue = timeStep + headStart;
    }
    for (; mDue >= timeStep; mDue -= timeStep) {
        drawStep();
        ++steps;
    }
    return steps;
}

void Player::drawStep() {
    if (mDemonstrating) demonstrate();
    mScene->drawFrame();
    ++mFrame;
}

void Player::demonstrate() {
    for (const Touch& touch : mDemonstration(mFrame, mWidth, mHeight)) {
        auto& held = mDemonstrated[static_cast<std::size_t>(touch.pointer)];
        held = touch;
        if (touch.phase == TouchPhase::Up) held.reset();
        mScene->touch(touch);
    }
}

void Player::endDemonstration() {
    mDemonstrating = false;
    for (auto& held : mDemonstrated) {
        if (held) mScene->touch({held->x, held->y, TouchPhase::Up, held->pointer});
        held.reset();
    }
}

} // namespace tidalume::gallery
