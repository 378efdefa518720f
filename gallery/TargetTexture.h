#pragma once

#include <GLES3/gl3.h>

namespace tidalume::gallery {

/// Owns a GL_RGBA8 texture with linear filtering, and a framebuffer that draws into it.
class TargetTexture {
  public:
    TargetTexture() = default;
    ~TargetTexture();
    TargetTexture(const TargetTexture&) = delete;
    TargetTexture& operator=(const TargetTexture&) = delete;

    /// Makes both, or gives the texture another size in texels. Leaves texture 0 and framebuffer 0 bound.
    void resize(int width, int height);

    /// The GL context is gone: abandons both names without a GL call.
    void contextLost();

    GLuint name() const { return mName; }
    GLuint framebuffer() const { return mFramebuffer; }

  private:
    GLuint mName = 0;
    GLuint mFramebuffer = 0;
};

} // namespace tidalume::gallery
