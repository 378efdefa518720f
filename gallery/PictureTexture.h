#pragma once

#include "headless/Picture.h"

#include <GLES3/gl3.h>

namespace tidalume::gallery {

/// Owns a GL_RGBA8 texture that shows a picture, with linear filtering and clamped edges.
class PictureTexture {
  public:
    PictureTexture() = default;
    ~PictureTexture();
    PictureTexture(const PictureTexture&) = delete;
    PictureTexture& operator=(const PictureTexture&) = delete;

    /// Shows a picture, whose bottom row becomes row 0 of the texture. Leaves texture 0 bound on the active unit.
    void load(const Picture& picture);

    /// The GL context is gone: abandons the name without a GL call.
    void contextLost() { mName = 0; }

    GLuint name() const { return mName; }

  private:
    GLuint mName = 0;
};

} // namespace tidalume::gallery
