#include "gallery/Demonstrations.h"

#include "gallery/Math.h"
#include "gallery/scenes/Poster.h"

#include <algorithm>
#include <cmath>

namespace tidalume::gallery {

namespace {

/// A touch and its place in shares of the surface.
struct Tap {
    int frame;
    float x, y;
};

/// A finger comes down and lifts some frames later.
template <std::size_t count>
std::vector<Touch> tap(const Tap (&taps)[count], int frame, float width, float height, int pointer) {
    constexpr int held = 4;
    std::vector<Touch> touches;
    for (const Tap& tap : taps) {
        if (frame == tap.frame) touches.push_back({tap.x * width, tap.y * height, TouchPhase::Down, pointer});
        if (frame == tap.frame + held) touches.push_back({tap.x * width, tap.y * height, TouchPhase::Up, pointer});
    }
    return touches;
}

/// What a finger does that is down from one frame to another.
TouchPhase phaseOf(int frame, int first, int last) {
    return frame == first ? TouchPhase::Down : frame == last ? TouchPhase::Up : TouchPhase::Move;
}

} // namespace

// A finger is drawn in an arc across the surface. When its waves have calmed down, three drops fall, whose rings the
// last picture of two seconds shows at their clearest.
std::vector<Touch> demonstrateWater(int frame, float width, float height) {
    constexpr int period = 120;
    constexpr int last = 34;
    constexpr Tap drops[] = {{74, 0.28F, 0.22F}, {88, 0.70F, 0.66F}, {107, 0.22F, 0.82F}};
    const int step = frame % period;
    std::vector<Touch> touches = tap(drops, step, width, height, 1);
    if (step >= 2 && step <= last) {
        const float t = static_cast<float>(step - 2) / (last - 2);
        touches.push_back(
            {width * (0.12F + 0.76F * t), height * (0.62F + 0.13F * std::sin(twoPi * t)), phaseOf(step, 2, last), 0});
    }
    return touches;
}

std::vector<Touch> demonstratePond(int frame, float width, float height) {
    constexpr Tap drops[] = {{1, 0.36F, 0.34F}, {45, 0.70F, 0.58F}, {84, 0.30F, 0.76F}};
    return tap(drops, frame % 120, width, height, 0);
}

std::vector<Touch> demonstrateBlobs(int frame, float width, float height) {
    constexpr int period = 120;
    constexpr int first = 15;
    constexpr int last = 95;
    const int step = frame % period;
    if (step < first || step > last) return {};
    const float t = static_cast<float>(step - first) / (last - first);
    return {{width * (0.5F + 0.32F * std::sin(twoPi * t)), height * (0.5F - 0.16F * std::cos(twoPi * t)),
             phaseOf(step, first, last), 0}};
}

// Three fingers go down one after another, sweep to and fro, and lift one after another.
std::vector<Touch> demonstrateSpray(int frame, float width, float height) {
    constexpr int period = 120;
    constexpr int length = 98;
    constexpr float places[3][2] = {{0.28F, 0.84F}, {0.74F, 0.80F}, {0.50F, 0.62F}};
    std::vector<Touch> touches;
    for (int i = 0; i < 3; ++i) {
        const int step = frame % period - 2 - 6 * i;
        if (step < 0 || step > length || (step > 0 && step < 4)) continue;
        const float sweep = std::sin(twoPi * static_cast<float>(std::max(step - 4, 0)) / (length - 4));
        const float angle = (i % 2 == 0 ? 0.8F : -0.8F) * sweep;
        const float reach = step == 0 ? 0 : 0.16F * std::min(width, height);
        touches.push_back({places[i][0] * width + reach * std::sin(angle),
                           places[i][1] * height - reach * std::cos(angle), phaseOf(step, 0, length), i});
    }
    return touches;
}

std::vector<Touch> demonstrateComets(int frame, float width, float height) {
    constexpr Tap launches[] = {{2, 0.50F, 0.42F}, {44, 0.36F, 0.56F}, {86, 0.60F, 0.45F}};
    return tap(launches, frame % 120, width, height, 0);
}

// A lens circles over the lights.
std::vector<Touch> demonstrateVectorGraphics(int frame, float width, float height) {
    constexpr int period = 240;
    constexpr int first = 20;
    constexpr int last = period - 1;
    const int step = frame % period;
    if (step < first) return {};
    const float t = static_cast<float>(step - first) / (period - first);
    const Poster poster(width, height);
    return {{poster.x(395 + 75 * std::cos(twoPi * t)), poster.y(838 + 40 * std::sin(2 * twoPi * t)),
             phaseOf(step, first, last), 0}};
}

std::vector<Touch> demonstrateNothing(int, float, float) {
    return {};
}

} // namespace tidalume::gallery
