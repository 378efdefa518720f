#include "gallery/viewer/Window.h"

#include "headless/Error.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cstdlib>

namespace tidalume::gallery {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw headless::Error(what + ": " + SDL_GetError());
}

// Without a display SDL would draw offscreen.
void openDisplay() {
    if (SDL_Init(SDL_INIT_VIDEO) != 0) fail("no display can be opened");
    const std::string driver = SDL_GetCurrentVideoDriver();
    const bool isVisible = driver != "offscreen" && driver != "dummy" && driver != "evdev";
    if (!isVisible && std::getenv("SDL_VIDEODRIVER") == nullptr) {
        SDL_Quit();
        throw headless::Error("there is no display, such as the environment variable DISPLAY names");
    }
}

// 540 x 960, or as much of it as leaves room for the window's frame.
SDL_Point fittingSize() {
    constexpr SDL_Point best = {540, 960};
    constexpr double share = 0.9;
    SDL_Rect screen = {};
    if (SDL_GetDisplayUsableBounds(0, &screen) != 0) return best;
    const double scale = std::min({1.0, share * screen.w / best.x, share * screen.h / best.y});
    return {std::max(1, static_cast<int>(scale * best.x)), std::max(1, static_cast<int>(scale * best.y))};
}

} // namespace

Window::Window(int width, int height) {
    SDL_SetHint(SDL_HINT_OPENGL_ES_DRIVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_FORCE_EGL, "1");
    // Fingers and the mouse send events of their own only.
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
    openDisplay();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    const Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
    const SDL_Point size = width > 0 ? SDL_Point{width, height} : fittingSize();
    mWindow = SDL_CreateWindow("Tidalume", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, size.x, size.y, flags);
    try {
        if (mWindow == nullptr) fail("no window can be opened");
        createContext();
    } catch (...) {
        release();
        throw;
    }
}

Window::~Window() {
    release();
}

void Window::remakeContext() {
    SDL_GL_DeleteContext(mContext);
    createContext();
}

void Window::toggleFullScreen() {
    const bool isFull = (SDL_GetWindowFlags(mWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
    SDL_SetWindowFullscreen(mWindow, isFull ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

SDL_Point Window::drawableSize() const {
    SDL_Point size = {};
    SDL_GL_GetDrawableSize(mWindow, &size.x, &size.y);
    return size;
}

SDL_Point Window::windowSize() const {
    SDL_Point size = {};
    SDL_GetWindowSize(mWindow, &size.x, &size.y);
    return size;
}

std::string Window::driver() const {
    return reinterpret_cast<const char*>(glGetString(GL_RENDERER));
}

void Window::createContext() {
    mContext = SDL_GL_CreateContext(mWindow);
    if (mContext == nullptr) fail("there is no OpenGL ES 3");
    SDL_GL_SetSwapInterval(1); // without it, frames are drawn as soon as they are due
}

void Window::release() {
    if (mContext != nullptr) SDL_GL_DeleteContext(mContext);
    if (mWindow != nullptr) SDL_DestroyWindow(mWindow);
    SDL_Quit();
}

} // namespace tidalume::gallery
