#pragma once

#include <GLES3/gl3.h>

namespace tidalume {

/// What an effect's render targets look like: one to three screen-sized half-float textures, each with a framebuffer
/// of its own that has it as colour attachment 0. Labels are those of checkGLError; all but the first must not be null.
struct TargetDescription {
    int count;                    ///< 1 to 3 textures and as many framebuffers
    GLint internalFormat;         ///< GL_R16F, GL_RG16F or GL_RGB16F
    const char* genTexturesLabel; ///< null: not checked
    const char* genFramebuffersLabel;
    struct Labels {
        const char* texImage;
        const char* bindFramebuffer;
        const char* attach;
    } labels[3];
};

/// Whether the current context's driver, by its name, draws on the processor, in threads of this process.
bool drawsOnProcessor();

/// Makes the textures, then the framebuffers, where their first name is 0: level 0 only, linear filters, clamped to the
/// edge, cleared to (0, 0, 0, 1). Leaves the last texture bound, framebuffer 0 bound and that clear colour set.
///
/// Where the driver says that it cannot render to the format, the texture is respecified with the fallback format that
/// it can render to; what is stored and read back stays the same. Where it can render to none, or gives another reason
/// or none, the set-up goes on with the framebuffer as it is.
///
/// Makes nothing when the size is one that no texture can have: below 1, or above GL_MAX_TEXTURE_SIZE where the driver
/// tells it, since some drivers answer such a size by ending the process. A size of 0 is silent; any other is logged as
/// the GL_INVALID_VALUE that glTexImage2D would have raised.
/// @param textures, framebuffers  the effect's own name members, `count` of each; not null, here and below
/// @param width, height           in texels
void createTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers, int width, int height);

/// Tells the driver that the next draw covers the whole target of the bound framebuffer, so that a GPU that draws in
/// tiles does not load what was there: clears it, to whatever clear colour is set. Scissor and colour mask hold for it
/// as for the draw. Does nothing where blending is on, since what was there counts then; where the driver that made the
/// last targets draws on the processor or can draw into no format; and with a program that failed to build.
/// @param program  that draws
void discardTarget(GLuint program);

/// Deletes the textures and the framebuffers that exist (their first name tells) and sets the names to 0.
void deleteTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers);

/// Sets the names to 0 without a GL call, for a context that is gone.
void abandonTargets(const TargetDescription& description, GLuint* textures, GLuint* framebuffers);

} // namespace tidalume
