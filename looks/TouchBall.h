#pragma once

#include "looks/Look.h"

#include <cmath>

namespace tidalume {

/// A ball that grows under a finger, and shrinks away where the finger has lifted.
struct TouchBall {
    float x = 0; // in pixels
    float y = 0;
    float size = 0; // 0 to 1, of its full radius
    bool isDown = false;

    void touch(float toX, float toY, TouchPhase phase) {
        isDown = phase == TouchPhase::Down || phase == TouchPhase::Move;
        if (!isDown) return;
        x = toX;
        y = toY;
    }

    void step() {
        constexpr float done = 0.01F;
        const float target = isDown ? 1 : 0;
        size += (target - size) * (isDown ? 0.15F : 0.1F);
        if (std::fabs(target - size) < done) size = target;
    }

    bool isMoving() const { return size != (isDown ? 1.0F : 0.0F); }
};

} // namespace tidalume
