#include "headless/HeadlessContext.h"

#include "headless/Error.h"

#include <EGL/eglext.h>
#include <GLES3/gl3.h>

#include <cstdio>

namespace tidalume::headless {

namespace {

[[noreturn]] void fail(const char* call) {
    char text[96];
    std::snprintf(text, sizeof text, "%s failed with EGL error 0x%04X", call, static_cast<unsigned>(eglGetError()));
    throw Error(text);
}

// The display is shared by all contexts of the process, so that no context ends it for the others.
EGLDisplay sharedDisplay() {
    static const EGLDisplay display = [] {
        const EGLDisplay opened = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (opened == EGL_NO_DISPLAY) {
            throw Error("EGL has no surfaceless platform (EGL_MESA_platform_surfaceless); Mesa 22 or later has one");
        }
        if (!eglInitialize(opened, nullptr, nullptr)) fail("eglInitialize");
        return opened;
    }();
    return display;
}

EGLConfig chooseConfig(EGLDisplay display) {
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_ES3_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &count)) fail("eglChooseConfig");
    if (count == 0) throw Error("the driver has no RGBA8888 pbuffer for OpenGL ES 3");
    return config;
}

void checkExtent(const char* name, int extent, int limit) {
    if (extent < 1) throw Error(std::string(name) + " " + std::to_string(extent) + " is below 1");
    if (extent > limit) {
        throw Error(std::string(name) + " " + std::to_string(extent) + " is above the driver's limit of " +
                    std::to_string(limit));
    }
}

const char* glString(GLenum name) {
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text != nullptr ? text : "unknown";
}

} // namespace

HeadlessContext::HeadlessContext(int width, int height)
    : mWidth(width), mHeight(height), mDisplay(sharedDisplay()), mConfig(chooseConfig(mDisplay)),
      mSurface(createSurface(width, height)) {
    try {
        createContext();
    } catch (...) {
        release();
        throw;
    }
}

HeadlessContext::~HeadlessContext() {
    release();
}

void HeadlessContext::makeCurrent() {
    if (!eglMakeCurrent(mDisplay, mSurface, mSurface, mContext)) fail("eglMakeCurrent");
}

void HeadlessContext::recreate() {
    eglMakeCurrent(mDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(mDisplay, mContext);
    mContext = EGL_NO_CONTEXT;
    createContext();
}

void HeadlessContext::resize(int width, int height) {
    const EGLSurface replaced = mSurface;
    mSurface = createSurface(width, height);
    mWidth = width;
    mHeight = height;
    makeCurrent();
    eglDestroySurface(mDisplay, replaced);
}

std::string HeadlessContext::driver() const {
    return std::string(glString(GL_VENDOR)) + " " + glString(GL_RENDERER) + ", " + glString(GL_VERSION);
}

void HeadlessContext::createContext() {
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 0, EGL_NONE};
    if (!eglBindAPI(EGL_OPENGL_ES_API)) fail("eglBindAPI");
    mContext = eglCreateContext(mDisplay, mConfig, EGL_NO_CONTEXT, version);
    if (mContext == EGL_NO_CONTEXT) fail("eglCreateContext");
    makeCurrent();
}

EGLSurface HeadlessContext::createSurface(int width, int height) const {
    EGLint widthLimit = 0;
    EGLint heightLimit = 0;
    eglGetConfigAttrib(mDisplay, mConfig, EGL_MAX_PBUFFER_WIDTH, &widthLimit);
    eglGetConfigAttrib(mDisplay, mConfig, EGL_MAX_PBUFFER_HEIGHT, &heightLimit);
    checkExtent("width", width, widthLimit);
    checkExtent("height", height, heightLimit);

    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    const EGLSurface surface = eglCreatePbufferSurface(mDisplay, mConfig, size);
    if (surface == EGL_NO_SURFACE) fail("eglCreatePbufferSurface");
    return surface;
}

void HeadlessContext::release() {
    if (mContext != EGL_NO_CONTEXT && eglGetCurrentContext() == mContext) {
        eglMakeCurrent(mDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    if (mContext != EGL_NO_CONTEXT) eglDestroyContext(mDisplay, mContext);
    if (mSurface != EGL_NO_SURFACE) eglDestroySurface(mDisplay, mSurface);
}

} // namespace tidalume::headless
