#include "headless/Pixels.h"

#include "headless/Error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace tidalume::headless {

namespace {

struct Format {
    GLenum internalFormat;
    GLenum format;
    int channels;
};

constexpr std::array<Format, 5> formats = {{
    {GL_R16F, GL_RED, 1},
    {GL_RG16F, GL_RG, 2},
    {GL_RGB16F, GL_RGB, 3},
    {GL_RGBA16F, GL_RGBA, 4},
    {GL_RGBA8, GL_RGBA, 4},
}};

std::string hexadecimal(GLenum value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%04X", value);
    return text;
}

const Format& findFormat(GLenum internalFormat) {
    for (const Format& format : formats) {
        if (format.internalFormat == internalFormat) return format;
    }
    throw Error("texture format " + hexadecimal(internalFormat) + " is none of R16F, RG16F, RGB16F, RGBA16F and RGBA8");
}

void checkSize(int width, int height) {
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    if (width < 1 || height < 1 || width > limit || height > limit) {
        throw Error("size " + std::to_string(width) + "x" + std::to_string(height) + " is not within 1 to " +
                    std::to_string(limit));
    }
}

std::size_t pixelCount(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

class ScopedTextureBinding {
  public:
    ScopedTextureBinding() { glGetIntegerv(GL_TEXTURE_BINDING_2D, &mName); }
    ~ScopedTextureBinding() { glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(mName)); }
    ScopedTextureBinding(const ScopedTextureBinding&) = delete;
    ScopedTextureBinding& operator=(const ScopedTextureBinding&) = delete;

  private:
    GLint mName = 0;
};

class TemporaryFramebuffer {
  public:
    TemporaryFramebuffer() {
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &mPrevious);
        glGenFramebuffers(1, &mName);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, mName);
    }
    ~TemporaryFramebuffer() {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(mPrevious));
        glDeleteFramebuffers(1, &mName);
    }
    TemporaryFramebuffer(const TemporaryFramebuffer&) = delete;
    TemporaryFramebuffer& operator=(const TemporaryFramebuffer&) = delete;

  private:
    GLint mPrevious = 0;
    GLuint mName = 0;
};

GLuint uploadTexture(const Format& format, int width, int height, GLenum type, const void* values) {
    const ScopedTextureBinding binding;
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format.internalFormat), width, height, 0, format.format, type,
                 values);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) {
        glDeleteTextures(1, &texture);
        throw Error("making a texture ended with GL error " + hexadecimal(error));
    }
    return texture;
}

void checkCount(const Format& format, int width, int height, std::size_t count) {
    checkSize(width, height);
    const std::size_t expected = pixelCount(width, height) * static_cast<std::size_t>(format.channels);
    if (count != expected) {
        throw Error(std::to_string(count) + " values were given for " + std::to_string(width) + "x" +
                    std::to_string(height) + " texels of " + std::to_string(format.channels) +
                    " channels, which take " + std::to_string(expected));
    }
}

bool isFloatFramebuffer() {
    GLint binding = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &binding);
    GLint type = 0;
    glGetFramebufferAttachmentParameteriv(GL_READ_FRAMEBUFFER, binding == 0 ? GL_BACK : GL_COLOR_ATTACHMENT0,
                                          GL_FRAMEBUFFER_ATTACHMENT_COMPONENT_TYPE, &type);
    return type == GL_FLOAT;
}

void checkComplete(const char* what) {
    const GLenum status = glCheckFramebufferStatus(GL_READ_FRAMEBUFFER);
    if (status == GL_FRAMEBUFFER_COMPLETE) return;
    throw Error(std::string(what) + " cannot be read: its framebuffer is incomplete on this driver, status " +
                hexadecimal(status));
}

// glReadPixels alone may give what was there before: the threads of llvmpipe 22 may not have drawn yet.
void readPixels(int width, int height, GLenum type, void* values) {
    glFinish();
    glReadPixels(0, 0, width, height, GL_RGBA, type, values);
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) throw Error("reading pixels back ended with GL error " + hexadecimal(error));
}

std::vector<std::uint8_t> readBytes(int width, int height) {
    std::vector<std::uint8_t> bytes(pixelCount(width, height) * 4);
    readPixels(width, height, GL_UNSIGNED_BYTE, bytes.data());
    return bytes;
}

} // namespace

int channelCount(GLenum internalFormat) {
    return findFormat(internalFormat).channels;
}

GLuint makeTexture(GLenum internalFormat, int width, int height, const std::vector<float>& values) {
    const Format& format = findFormat(internalFormat);
    checkCount(format, width, height, values.size());
    if (internalFormat != GL_RGBA8) return uploadTexture(format, width, height, GL_FLOAT, values.data());

    std::vector<std::uint8_t> bytes(values.size());
    std::transform(values.begin(), values.end(), bytes.begin(), [](float value) {
        // The comparison's order makes a NaN 0.
        return static_cast<std::uint8_t>(std::lround(std::min(1.0F, std::max(0.0F, value)) * 255.0F));
    });
    return uploadTexture(format, width, height, GL_UNSIGNED_BYTE, bytes.data());
}

GLuint makeTexture(GLenum internalFormat, int width, int height, const std::vector<std::uint8_t>& values) {
    const Format& format = findFormat(internalFormat);
    checkCount(format, width, height, values.size());
    if (internalFormat == GL_RGBA8) return uploadTexture(format, width, height, GL_UNSIGNED_BYTE, values.data());

    std::vector<float> floats(values.size());
    std::transform(values.begin(), values.end(), floats.begin(), [](std::uint8_t value) { return value / 255.0F; });
    return uploadTexture(format, width, height, GL_FLOAT, floats.data());
}

PixelArray readTexture(GLuint texture, int width, int height) {
    if (!glIsTexture(texture)) throw Error("there is no texture named " + std::to_string(texture));
    const TemporaryFramebuffer temporary;
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    checkComplete("the texture");
    return readFramebuffer(width, height);
}

PixelArray readFramebuffer(int width, int height) {
    checkSize(width, height);
    checkComplete("the framebuffer");
    PixelArray pixels;
    pixels.width = width;
    pixels.height = height;
    pixels.rgba.resize(pixelCount(width, height) * 4);
    if (isFloatFramebuffer()) {
        readPixels(width, height, GL_FLOAT, pixels.rgba.data());
    } else {
        const std::vector<std::uint8_t> bytes = readBytes(width, height);
        std::transform(bytes.begin(), bytes.end(), pixels.rgba.begin(),
                       [](std::uint8_t value) { return value / 255.0F; });
    }
    return pixels;
}

Picture framebufferPicture(int width, int height) {
    checkSize(width, height);
    checkComplete("the framebuffer");
    const std::vector<std::uint8_t> bytes = readBytes(width, height);
    Picture picture(width, height);
    const std::size_t rowLength = static_cast<std::size_t>(width) * 4;
    for (int y = 0; y < height; ++y) {
        const auto row = bytes.begin() + static_cast<std::ptrdiff_t>(rowLength) * (height - 1 - y);
        std::copy_n(row, rowLength, picture.pixel(0, y));
    }
    for (std::size_t alpha = 3; alpha < picture.rgba.size(); alpha += 4)
        picture.rgba[alpha] = 255;
    return picture;
}

} // namespace tidalume::headless
