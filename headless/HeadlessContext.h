#pragma once

#include <EGL/egl.h>

#include <string>

namespace tidalume::headless {

/// An OpenGL ES 3.0 context that draws without a window, a screen or a display server.
///
/// Framebuffer 0 is an EGL pbuffer of 8 bits each of red, green, blue and alpha, without depth or stencil, on Mesa's
/// surfaceless platform. The environment variables of Mesa choose the driver, for example GALLIUM_DRIVER=softpipe.
///
///     HeadlessContext context(540, 960);
///     effect.init();                       // draws into framebuffer 0
///     Picture picture = framebufferPicture(540, 960);
///
/// Every function throws Error where EGL refuses, and must be called on the thread that made the object.
class HeadlessContext {
  public:
    /// Makes a context and a pbuffer of width x height pixels, and makes them current on this thread.
    HeadlessContext(int width, int height);

    /// Destroys the context and everything in it; afterwards no context is current if this one was.
    ~HeadlessContext();

    HeadlessContext(const HeadlessContext&) = delete;
    HeadlessContext& operator=(const HeadlessContext&) = delete;

    /// Makes this context current on the calling thread, after another one was.
    void makeCurrent();

    /// Destroys the context, as a phone does behind an application's back, and makes a new one current. Every GL name
    /// of the old context is gone; framebuffer 0 keeps its size.
    void recreate();

    /// Replaces framebuffer 0 by one of another size; GL names, state and viewport stay.
    void resize(int width, int height);

    /// The size of framebuffer 0 in pixels.
    /// @{
    int width() const { return mWidth; }
    int height() const { return mHeight; }
    /// @}

    /// Vendor, renderer and version of the driver in one line.
    std::string driver() const;

  private:
    void createContext();
    EGLSurface createSurface(int width, int height) const;
    void release();

    int mWidth;
    int mHeight;
    EGLDisplay mDisplay;
    EGLConfig mConfig;
    EGLSurface mSurface;
    EGLContext mContext = EGL_NO_CONTEXT;
};

} // namespace tidalume::headless
