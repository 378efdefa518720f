#include "foundation/Log.h"

#include <GLES3/gl3.h>

namespace tidalume {
namespace {

const char* glErrorFormat(GLenum error) {
    switch (error) {
    case GL_INVALID_ENUM:
        return "after %s() glError (0x%x) GL_INVALID_ENUM\n"; // kept: brackets
    case GL_INVALID_VALUE:
        return "after %s() glError (0x%x) GL_INVALID_VALUE\n";
    case GL_INVALID_OPERATION:
        return "after %s() glError (0x%x) GL_INVALID_OPERATION\n";
    case GL_OUT_OF_MEMORY:
        return "after %s() glError (0x%x) GL_OUT_OF_MEMORY\n";
    default:
        return "after %s() glError (0x%x)\n"; // kept: unnamed
    }
}

} // namespace

void logGLError(const char* op, unsigned int error) {
    __android_log_print(ANDROID_LOG_ERROR, logTag, glErrorFormat(error), op, error);
}

} // namespace tidalume
