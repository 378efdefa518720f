#pragma once

#include "headless/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

/// Where a picture first differs from another by more than so many steps of 8 bits; empty where it does not.
inline std::string difference(const tidalume::Picture& made, const tidalume::Picture& expected, int steps = 0) {
    const auto isNear = [=](int is, int should) { return std::abs(is - should) <= steps; };
    const auto [is, should] =
        std::mismatch(made.rgba.begin(), made.rgba.end(), expected.rgba.begin(), expected.rgba.end(), isNear);
    std::ostringstream text;
    if (std::pair(made.width, made.height) != std::pair(expected.width, expected.height)) {
        text << made.width << "x" << made.height << " instead of " << expected.width << "x" << expected.height;
    } else if (is != made.rgba.end()) {
        const auto pixel = (is - made.rgba.begin()) / 4;
        text << "rgba"[(is - made.rgba.begin()) % 4] << " at " << pixel % made.width << ", " << pixel / made.width
             << ": " << +*is << " instead of " << +*should;
    }
    return text.str();
}
