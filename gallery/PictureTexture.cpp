#include "gallery/PictureTexture.h"

#include <algorithm>

namespace tidalume::gallery {

PictureTexture::~PictureTexture() {
    if (mName != 0) glDeleteTextures(1, &mName);
}

void PictureTexture::load(const Picture& picture) {
    Picture flipped(picture.width, picture.height);
    const auto rowLength = static_cast<std::ptrdiff_t>(picture.width) * 4;
    for (int y = 0; y < picture.height; ++y) {
        std::copy_n(picture.pixel(0, picture.height - 1 - y), rowLength, flipped.pixel(0, y));
    }

    if (mName == 0) glGenTextures(1, &mName);
    glBindTexture(GL_TEXTURE_2D, mName);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, picture.width, picture.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 flipped.rgba.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

} // namespace tidalume::gallery
