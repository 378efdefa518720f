#pragma once

#include <GLES3/gl3.h>

/// Above the names that a test makes.
constexpr GLuint endOfNames = 500;

/// How many GL objects there are.
inline int liveNames() {
    int live = 0;
    for (GLuint name = 1; name < endOfNames; ++name)
        live += glIsTexture(name) + glIsFramebuffer(name) + glIsProgram(name) + glIsShader(name) + glIsBuffer(name);
    return live;
}
