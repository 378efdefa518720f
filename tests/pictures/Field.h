#pragma once

#include "testing/Noise.h"
#include "tests/pictures/PictureCase.h"

namespace tidalume::pictures {

using test::noise;

/// A texture, and what it holds as the driver has stored it.
struct Field : plain::Texels {
    GLuint texture;

    Field(GLuint texture, int width, int height)
        : Texels{width, height, headless::readTexture(texture, width, height).rgba}, texture(texture) {}
};

/// Noise in a new texture, which lives as long as the context.
inline Field noiseTexture(GLenum format, int width, int height, float lowest = 0.0F, float highest = 1.0F) {
    const int count = width * height * headless::channelCount(format);
    return {headless::makeTexture(format, width, height, noise(1, count, lowest, highest)), width, height};
}

template <typename... Effects>
void makeReady(int width, int height, Effects&... effects) {
    (..., (effects.init(), effects.setScreenSize(width, height)));
}

/// Makes the pond run its next step.
template <typename Pond>
void runStep(Pond& pond) {
    const GLuint before = pond.getTexture();
    while (pond.getTexture() == before)
        pond.update();
}

} // namespace tidalume::pictures
