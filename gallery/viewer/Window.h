#pragma once

#include <SDL.h>
#include <string>

namespace tidalume::gallery {

/// A window with an OpenGL ES 3 context through EGL, current on this thread. Functions throw Error where SDL refuses.
class Window {
  public:
    /// @param width, height  of the window, in the coordinates of the desktop; both 0 for one that fits the screen
    Window(int width, int height);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Destroys the context with everything in it and makes a new one current.
    void remakeContext();

    /// Shows what framebuffer 0 holds; afterwards it may hold anything.
    void swap() { SDL_GL_SwapWindow(mWindow); }

    void resize(int width, int height) { SDL_SetWindowSize(mWindow, width, height); }
    void setTitle(const std::string& title) { SDL_SetWindowTitle(mWindow, title.c_str()); }
    void toggleFullScreen();

    /// Whether nobody can see it.
    bool isMinimised() const { return (SDL_GetWindowFlags(mWindow) & (SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) != 0; }

    /// Size of framebuffer 0 in pixels, and of the window in the coordinates of the mouse.
    SDL_Point drawableSize() const;
    SDL_Point windowSize() const;

    /// The name of the driver.
    std::string driver() const;

  private:
    void createContext();
    void release();

    SDL_Window* mWindow = nullptr;
    SDL_GLContext mContext = nullptr;
};

} // namespace tidalume::gallery
