#include "bench/LookFrames.h"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace tidalume::bench {

LookFrames::LookFrames(std::unique_ptr<Look> look, int width, int height)
    : mLook(std::move(look)), mWidth(width), mHeight(height) {
    constexpr int grown = 100;
    srand48(1);
    mLook->contextCreated();
    mLook->setSize(width, height);
    while (mFrame < grown)
        draw();
}

void LookFrames::draw() {
    touch();
    mLook->draw(mFrame / 60.0);
    ++mFrame;
}

void LookFrames::touch() {
    constexpr int period = 45;
    constexpr int held = 40;
    const int step = mFrame % period;
    if (step > held) return;
    const float angle = 0.1F * static_cast<float>(mFrame);
    mLook->touch(0, static_cast<float>(mWidth) * (0.5F + 0.3F * std::sin(angle)),
                 static_cast<float>(mHeight) * (0.5F + 0.3F * std::cos(angle)),
                 step == 0      ? TouchPhase::Down
                 : step == held ? TouchPhase::Up
                                : TouchPhase::Move);
}

} // namespace tidalume::bench
