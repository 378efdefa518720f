#include "gallery/TargetTexture.h"

namespace tidalume::gallery {

TargetTexture::~TargetTexture() {
    if (mName != 0) glDeleteTextures(1, &mName);
    if (mFramebuffer != 0) glDeleteFramebuffers(1, &mFramebuffer);
}

void TargetTexture::resize(int width, int height) {
    if (mName == 0) glGenTextures(1, &mName);
    glBindTexture(GL_TEXTURE_2D, mName);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);

    if (mFramebuffer == 0) glGenFramebuffers(1, &mFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mName, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void TargetTexture::contextLost() {
    mName = 0;
    mFramebuffer = 0;
}

} // namespace tidalume::gallery
