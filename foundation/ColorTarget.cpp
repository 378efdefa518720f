#include "foundation/ColorTarget.h"

namespace tidalume {

ColorTarget::~ColorTarget() {
    if (mTexture != 0) glDeleteTextures(1, &mTexture);
    if (mFramebuffer != 0) glDeleteFramebuffers(1, &mFramebuffer);
}

void ColorTarget::resize(int width, int height, const void* pixels) {
    if (mTexture == 0) glGenTextures(1, &mTexture);
    glBindTexture(GL_TEXTURE_2D, mTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);

    if (mFramebuffer == 0) glGenFramebuffers(1, &mFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mTexture, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void ColorTarget::abandon() {
    mTexture = 0;
    mFramebuffer = 0;
}

} // namespace tidalume
