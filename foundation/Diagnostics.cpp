#include "foundation/Diagnostics.h"

#include "foundation/Log.h"

#include <EGL/egl.h>
#include <GLES3/gl3.h>

#include <cstdio>

namespace {

using tidalume::logTag;

const char* const eglErrorNames[] = {
    "EGL_SUCCESS",           "EGL_NOT_INITIALIZED",   "EGL_BAD_ACCESS",          "EGL_BAD_ALLOC",   "EGL_BAD_ATTRIBUTE",
    "EGL_BAD_CONFIG",        "EGL_BAD_CONTEXT",       "EGL_BAD_CURRENT_SURFACE", "EGL_BAD_DISPLAY", "EGL_BAD_MATCH",
    "EGL_BAD_NATIVE_PIXMAP", "EGL_BAD_NATIVE_WINDOW", "EGL_BAD_PARAMETER",       "EGL_BAD_SURFACE", "EGL_CONTEXT_LOST",
};

struct EGLAttribute {
    EGLint code;
    const char* name;
};

const EGLAttribute eglAttributes[] = {
    {0x3020, "EGL_BUFFER_SIZE"},
    {0x3021, "EGL_ALPHA_SIZE"},
    {0x3022, "EGL_BLUE_SIZE"},
    {0x3023, "EGL_GREEN_SIZE"},
    {0x3024, "EGL_RED_SIZE"},
    {0x3025, "EGL_DEPTH_SIZE"},
    {0x3026, "EGL_STENCIL_SIZE"},
    {0x3027, "EGL_CONFIG_CAVEAT"},
    {0x3028, "EGL_CONFIG_ID"},
    {0x3029, "EGL_LEVEL"},
    {0x302A, "EGL_MAX_PBUFFER_HEIGHT"},
    {0x302B, "EGL_MAX_PBUFFER_PIXELS"},
    {0x302C, "EGL_MAX_PBUFFER_WIDTH"},
    {0x302D, "EGL_NATIVE_RENDERABLE"},
    {0x302E, "EGL_NATIVE_VISUAL_ID"},
    {0x302F, "EGL_NATIVE_VISUAL_TYPE"},
    {0x3031, "EGL_SAMPLES"},
    {0x3032, "EGL_SAMPLE_BUFFERS"},
    {0x3033, "EGL_SURFACE_TYPE"},
    {0x3034, "EGL_TRANSPARENT_TYPE"},
    {0x3037, "EGL_TRANSPARENT_RED_VALUE"},
    {0x3036, "EGL_TRANSPARENT_GREEN_VALUE"},
    {0x3035, "EGL_TRANSPARENT_BLUE_VALUE"},
    {0x3039, "EGL_BIND_TO_TEXTURE_RGB"},
    {0x303A, "EGL_BIND_TO_TEXTURE_RGBA"},
    {0x303B, "EGL_MIN_SWAP_INTERVAL"},
    {0x303C, "EGL_MAX_SWAP_INTERVAL"},
    {0x303D, "EGL_LUMINANCE_SIZE"},
    {0x303E, "EGL_ALPHA_MASK_SIZE"},
    {0x303F, "EGL_COLOR_BUFFER_TYPE"},
    {0x3040, "EGL_RENDERABLE_TYPE"},
    {0x3042, "EGL_CONFORMANT"},
};

} // namespace

const char* stringEGLError(int error) {
    if (error < EGL_SUCCESS || error > EGL_CONTEXT_LOST) return "UNKNOWN";
    return eglErrorNames[error - EGL_SUCCESS];
}

void checkGLError(const char* op) {
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError())
        tidalume::logGLError(op, error);
}

void checkEGLError(const char* op, unsigned int returnVal) {
    if (returnVal != EGL_TRUE) {
        __android_log_print(ANDROID_LOG_ERROR, logTag, "%s() returned %d\n", op, static_cast<int>(returnVal));
    }
    for (EGLint error = eglGetError(); error != EGL_SUCCESS; error = eglGetError()) {
        __android_log_print(ANDROID_LOG_ERROR, logTag, "after %s() eglError %s (0x%x)\n", op, stringEGLError(error),
                            static_cast<unsigned int>(error));
    }
}

void printGLString(const char* name, unsigned int s) {
    const auto* value = reinterpret_cast<const char*>(glGetString(s));
    __android_log_print(ANDROID_LOG_ERROR, logTag, "GL %s = %s\n", name, value ? value : "(null)");
}

void printEGLConfiguration(void* display, void* config) {
    for (const EGLAttribute& attribute : eglAttributes) {
        EGLint value = -1;
        const EGLBoolean read = eglGetConfigAttrib(display, config, attribute.code, &value);
        const EGLint error = eglGetError();
        if (read == EGL_FALSE || error != EGL_SUCCESS) continue;
        std::printf(" %s: ", attribute.name); // kept: stdout
        std::printf("%d (0x%x)", value, static_cast<unsigned int>(value));
    }
    std::putchar('\n');
}
