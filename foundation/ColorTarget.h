#pragma once

#include <GLES3/gl3.h>

namespace tidalume {

/// Owns a GL_RGBA8 texture with linear filters and clamped edges, and a framebuffer that draws into it.
class ColorTarget {
  public:
    ColorTarget() = default;
    ~ColorTarget();
    ColorTarget(const ColorTarget&) = delete;
    ColorTarget& operator=(const ColorTarget&) = delete;

    /// Makes both, or gives the texture another size in texels. Leaves texture 0 and framebuffer 0 bound.
    /// @param pixels  four bytes each, the bottom row first; null leaves the texture undefined
    void resize(int width, int height, const void* pixels = nullptr);

    /// The GL context is gone: abandons both names without a GL call.
    void abandon();

    GLuint texture() const { return mTexture; }
    GLuint framebuffer() const { return mFramebuffer; }

  private:
    GLuint mTexture = 0;
    GLuint mFramebuffer = 0;
};

} // namespace tidalume
