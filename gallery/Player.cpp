#include "gallery/Player.h"

#include <cstdlib>

namespace tidalume::gallery {

namespace {

// Half a step ahead, so that a display of 60 Hz whose frames come a little early or late gets one step for each.
constexpr double headStart = Player::timeStep / 2;

std::unique_ptr<Scene> makeScene(const SceneEntry& entry, std::uint32_t seed) {
    srand48(static_cast<long>(seed));
    return entry.make();
}

} // namespace

Player::Player(const SceneEntry& entry, std::uint32_t seed) : mScene(makeScene(entry, seed)), mDue(headStart) {}

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
    for (const Touch& touch : mScene->demonstration(mFrame)) {
        auto& held = mDemonstrated[static_cast<std::size_t>(touch.pointer)];
        held = touch;
        if (touch.action == TouchAction::Up) held.reset();
        mScene->touch(touch);
    }
}

void Player::endDemonstration() {
    mDemonstrating = false;
    for (auto& held : mDemonstrated) {
        if (held) mScene->touch({held->x, held->y, TouchAction::Up, held->pointer});
        held.reset();
    }
}

} // namespace tidalume::gallery
