#include "foundation/RenderTarget.h"

#include "foundation/Diagnostics.h"
#include "foundation/Log.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>

namespace tidalume {
namespace {

struct Format {
    GLint internalFormat;
    GLenum format;
    GLint fallback; ///< internal format to fall back to; 0: none
};

/// GL_RGB16F is colour-renderable on Mesa, but not with EXT_color_buffer_float alone, as on many phones and in every
/// browser; with EXT_color_buffer_half_float alone, one- and two-channel formats may be missing. GL_RGBA16F comes with
/// both.
const Format formats[] = {
    {GL_R16F, GL_RED, GL_RG16F},
    {GL_RG16F, GL_RG, GL_RGBA16F},
    {GL_RGB16F, GL_RGB, GL_RGBA16F},
    {GL_RGBA16F, GL_RGBA, 0},
};

const Format& formatOf(GLint internalFormat) {
    return *std::find_if(std::begin(formats), std::end(formats),
                         [&](const Format& format) { return format.internalFormat == internalFormat; });
}

/// They load nothing, and a clear is one more write of the whole target: an eighth of a simulation's pass on llvmpipe.
const char* const processorDrivers[] = {"llvmpipe", "softpipe", "SwiftShader"};

/// Whether passes say what they overwrite; as the driver was when this thread's last targets were made. Effects of
/// different classes may be drawn on different threads at once.
thread_local bool discardsTargets = false;

void specifyTexture(const Format& format, int width, int height, const char* label) {
    glTexImage2D(GL_TEXTURE_2D, 0, format.internalFormat, width, height, 0, format.format, GL_HALF_FLOAT, nullptr);
    checkGLError(label);
}

/// GL_MAX_TEXTURE_SIZE, or no limit where the driver leaves the question unanswered.
GLint largestTextureSize() {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return size > 0 ? size : INT_MAX;
}

/// Whether a texture can have the size. Logs what the GL would have said to one that is an error.
bool isTextureSize(int width, int height, const char* texImageLabel) {
    const GLint largest = largestTextureSize();
    const auto [lower, upper] = std::minmax(width, height);
    if (lower < 0 || upper > largest) logGLError(texImageLabel, GL_INVALID_VALUE);
    return lower >= 1 && upper <= largest;
}

void createTextures(const TargetDescription& description, GLuint* textures, int width, int height) {
    glGenTextures(description.count, textures);
    if (description.genTexturesLabel) checkGLError(description.genTexturesLabel);
    for (int i = 0; i < description.count; ++i) {
        glBindTexture(GL_TEXTURE_2D, textures[i]);
        specifyTexture(formatOf(description.internalFormat), width, height, description.labels[i].texImage);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
}

/// Whether the driver says that it cannot render to the format of the bound framebuffer's texture. A status of 0 is
/// that of an error, or of a driver that does not answer.
bool isFormatRefused() {
    const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    return status == GL_FRAMEBUFFER_UNSUPPORTED || status == GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT;
}

/// Respecifies the texture of the bound framebuffer with one fallback format after the other until the driver accepts
/// one. False where it accepts none.
bool useFallbackUntilAccepted(const TargetDescription& description, const GLuint* textures, int i, int width,
                              int height) {
    GLint fallback = formatOf(description.internalFormat).fallback;
    while (isFormatRefused()) {
        if (fallback == 0) return false;
        const Format& format = formatOf(fallback);
        glBindTexture(GL_TEXTURE_2D, textures[i]);
        specifyTexture(format, width, height, description.labels[i].texImage);
        glBindTexture(GL_TEXTURE_2D, textures[description.count - 1]);
        fallback = format.fallback;
    }
    return true;
}

void createFramebuffers(const TargetDescription& description, const GLuint* textures, GLuint* framebuffers, int width,
                        int height) {
    glGenFramebuffers(description.count, framebuffers);
    checkGLError(description.genFramebuffersLabel);
    for (int i = 0; i < description.count; ++i) {
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffers[i]);
        checkGLError(description.labels[i].bindFramebuffer);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, textures[i], 0);
        checkGLError(description.labels[i].attach);
        // A clear of what cannot be drawn into would be an error of its own, under the next check's label.
        if (!useFallbackUntilAccepted(description, textures, i, width, height)) discardsTargets = false;
        glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT); // kept: clear-unchecked
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
}

} // namespace

bool drawsOnProcessor() {
    const auto* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    return renderer && std::any_of(std::begin(processorDrivers), std::end(processorDrivers),
                                   [&](const char* name) { return std::strstr(renderer, name); });
}

void createTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers, int width,
                   int height) {
    if (textures[0] != 0 && framebuffers[0] != 0) return;
    if (!isTextureSize(width, height, description.labels[0].texImage)) return;
    discardsTargets = !drawsOnProcessor();
    if (textures[0] == 0) createTextures(description, textures, width, height);
    // Without a texture a framebuffer would stay empty for good: leave both for the next call.
    if (textures[0] != 0 && framebuffers[0] == 0) {
        createFramebuffers(description, textures, framebuffers, width, height);
    }
}

// Of the two ways that vendors name, the clear is the one that the open drivers of Mali and VideoCore heed, too;
// glInvalidateFramebuffer would also lose what lies outside an application's scissor.
void discardTarget(GLuint program) {
    if (discardsTargets && program != 0 && !glIsEnabled(GL_BLEND)) glClear(GL_COLOR_BUFFER_BIT);
}

void deleteTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers) {
    if (textures[0] != 0) glDeleteTextures(description.count, textures); // kept: first-name
    if (framebuffers[0] != 0) glDeleteFramebuffers(description.count, framebuffers);
    abandonTargets(description, textures, framebuffers);
}

void abandonTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers) {
    std::fill_n(textures, description.count, 0U);
    std::fill_n(framebuffers, description.count, 0U);
}

} // namespace tidalume
