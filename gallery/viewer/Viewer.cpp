#include "gallery/viewer/Viewer.h"

#include "gallery/Background.h"
#include "gallery/PictureTexture.h"
#include "headless/Error.h"
#include "headless/PictureFile.h"
#include "headless/Pixels.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace tidalume::gallery {

namespace {

constexpr SDL_FingerID mouse = -1;

Picture readBackground(const std::string& path) {
    if (path.empty()) return {};
    try {
        return headless::readPicture(path);
    } catch (const std::exception& error) {
        throw headless::Error(std::string("--background: ") + error.what());
    }
}

// Stretches a picture over framebuffer 0.
void blit(const Picture& picture, SDL_Point size) {
    PictureTexture texture;
    texture.load(picture);
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture.name(), 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    glBlitFramebuffer(0, 0, picture.width, picture.height, 0, 0, size.x, size.y, GL_COLOR_BUFFER_BIT, GL_LINEAR);
    glDeleteFramebuffers(1, &framebuffer);
}

std::string freePath(const std::string& scene) {
    for (int number = 1;; ++number) {
        std::string path = "tidalume-" + scene + '-' + std::to_string(number) + ".png";
        if (!std::filesystem::exists(path)) return path;
    }
}

} // namespace

Viewer::Viewer(const ViewerOptions& options)
    : mScript(options.script.empty() ? std::vector<ScriptEvent>() : readScript(options.script)),
      mBackground(readBackground(options.background)), mGround(options.ground), mSettings(options.settings),
      mWindow(options.width, options.height) {
    show(options.scene);
}

void Viewer::run() {
    while (!mQuit) {
        playScript();
        SDL_Event event;
        while (SDL_PollEvent(&event) != 0)
            handle(event);
        fitWindow();
        if (draw()) {
            mWindow.swap();
            updateTitle();
        } else {
            SDL_Delay(1);
        }
        ++mFrame;
    }
}

void Viewer::playScript() {
    for (; mNextEvent < mScript.size() && mScript[mNextEvent].frame <= mFrame; ++mNextEvent) {
        std::visit([this](const auto& event) { play(event); }, mScript[mNextEvent].what);
    }
}

// Goes through SDL's queue, as real input does.
void Viewer::play(const ScriptTouch& touch) {
    SDL_Event event = {};
    const SDL_Point window = mWindow.windowSize();
    const SDL_Point drawable = mWindow.drawableSize();
    const float x = touch.x / static_cast<float>(drawable.x);
    const float y = touch.y / static_cast<float>(drawable.y);
    if (touch.finger) {
        event.type = touch.phase == TouchPhase::Down ? SDL_FINGERDOWN
                     : touch.phase == TouchPhase::Up ? SDL_FINGERUP
                                                     : SDL_FINGERMOTION;
        event.tfinger.fingerId = *touch.finger;
        event.tfinger.x = x;
        event.tfinger.y = y;
    } else if (touch.phase == TouchPhase::Move) {
        event.type = SDL_MOUSEMOTION;
        event.motion.x = static_cast<int>(x * static_cast<float>(window.x));
        event.motion.y = static_cast<int>(y * static_cast<float>(window.y));
    } else {
        event.type = touch.phase == TouchPhase::Down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = static_cast<int>(x * static_cast<float>(window.x));
        event.button.y = static_cast<int>(y * static_cast<float>(window.y));
    }
    SDL_PushEvent(&event);
}

void Viewer::play(const KeyPress& press) {
    SDL_Event event = {};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = press.key;
    SDL_PushEvent(&event);
}

void Viewer::handle(const SDL_Event& event) {
    const SDL_Point size = mWindow.drawableSize();
    const float fingerX = event.tfinger.x * static_cast<float>(size.x);
    const float fingerY = event.tfinger.y * static_cast<float>(size.y);
    switch (event.type) {
    case SDL_QUIT:
        mQuit = true;
        break;
    case SDL_WINDOWEVENT:
        if (event.window.event == SDL_WINDOWEVENT_EXPOSED) mNeedsRedraw = true;
        break;
    case SDL_KEYDOWN:
        if (event.key.repeat == 0) press(event.key.keysym.sym);
        break;
    case SDL_MOUSEBUTTONDOWN:
        if (event.button.button == SDL_BUTTON_LEFT) touchByMouse(event.button.x, event.button.y, TouchPhase::Down);
        break;
    case SDL_MOUSEMOTION:
        touchByMouse(event.motion.x, event.motion.y, TouchPhase::Move);
        break;
    case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT) touchByMouse(event.button.x, event.button.y, TouchPhase::Up);
        break;
    case SDL_FINGERDOWN:
        touch(event.tfinger.fingerId, TouchPhase::Down, fingerX, fingerY);
        break;
    case SDL_FINGERMOTION:
        touch(event.tfinger.fingerId, TouchPhase::Move, fingerX, fingerY);
        break;
    case SDL_FINGERUP:
        touch(event.tfinger.fingerId, TouchPhase::Up, fingerX, fingerY);
        break;
    default:
        break;
    }
}

void Viewer::press(SDL_Keycode key) {
    const std::size_t count = sceneTable().size();
    if (key >= SDLK_1 && key <= SDLK_9 && static_cast<std::size_t>(key - SDLK_1) < count) {
        show(static_cast<std::size_t>(key - SDLK_1));
    }
    switch (key) {
    case SDLK_LEFT:
        show((mScene + count - 1) % count);
        break;
    case SDLK_RIGHT:
        show((mScene + 1) % count);
        break;
    case SDLK_SPACE:
        mPaused = !mPaused;
        mPausedPicture = {};
        break;
    case SDLK_r:
        ++mSeed;
        show(mScene);
        break;
    case SDLK_s:
        mSavePath = freePath(sceneTable()[mScene].name);
        break;
    case SDLK_f:
        mWindow.toggleFullScreen();
        break;
    case SDLK_c:
        mPlayer->contextLost();
        mWindow.remakeContext();
        mSize = {};
        break;
    case SDLK_q:
    case SDLK_ESCAPE:
        mQuit = true;
        break;
    default:
        break;
    }
}

void Viewer::touch(SDL_FingerID id, TouchPhase phase, float x, float y) {
    const std::optional<SDL_FingerID> none;
    auto slot = std::find(mPointers.begin(), mPointers.end(), id);
    if (slot == mPointers.end() && phase == TouchPhase::Down)
        slot = std::find(mPointers.begin(), mPointers.end(), none);
    if (slot == mPointers.end()) return;
    *slot = id;
    if (phase == TouchPhase::Up) slot->reset();
    mPlayer->touch({x, y, phase, static_cast<int>(slot - mPointers.begin())});
}

void Viewer::touchByMouse(int x, int y, TouchPhase phase) {
    const SDL_Point drawable = mWindow.drawableSize();
    const SDL_Point window = mWindow.windowSize();
    touch(mouse, phase, static_cast<float>(x) * static_cast<float>(drawable.x) / static_cast<float>(window.x),
          static_cast<float>(y) * static_cast<float>(drawable.y) / static_cast<float>(window.y));
}

void Viewer::show(std::size_t scene) {
    mScene = scene;
    mPlayer = std::make_unique<Player>(sceneTable()[scene], mSeed);
    apply(mSettings, *mPlayer);
    mSize = {};
    mPointers = {};
    mPausedPicture = {};
}

void Viewer::fitWindow() {
    const SDL_Point size = mWindow.drawableSize();
    if ((size.x == mSize.x && size.y == mSize.y) || size.x < 1 || size.y < 1) return;
    const std::string ground = mGround.empty() ? groundOf(sceneTable()[mScene], mSettings.preset) : mGround;
    mPlayer->setUp(size.x, size.y, makeBackground(mBackground, ground, size.x, size.y));
    mSize = size;
    mNeedsRedraw = true;
}

// Whether framebuffer 0 holds a new picture.
bool Viewer::draw() {
    const bool isNew = mPaused ? redraw() : advance() > 0;
    mNeedsRedraw = false;
    if (isNew && !mSavePath.empty()) save();
    return isNew;
}

int Viewer::advance() {
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - mTime).count();
    mTime = now;
    if (mScript.empty()) return mPlayer->advance(seconds);
    mPlayer->drawStep();
    return 1;
}

// A pause begins with one step, whose picture is shown until the pause ends, stretched where the window has been
// resized: some effects move as they draw and could not draw the same picture again.
bool Viewer::redraw() {
    if (mPausedPicture.width == 0) {
        mPlayer->drawStep();
        mPausedPicture = headless::framebufferPicture(mSize.x, mSize.y);
        return true;
    }
    const bool isDue = mNeedsRedraw || !mSavePath.empty();
    if (isDue) blit(mPausedPicture, mSize);
    return isDue;
}

void Viewer::save() {
    try {
        headless::writePng(mSavePath, headless::framebufferPicture(mSize.x, mSize.y));
        std::printf("%s\n", mSavePath.c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tidalume-viewer: %s\n", error.what());
    }
    mSavePath.clear();
}

// Twice a second: the scene, the time between frames and the driver.
void Viewer::updateTitle() {
    ++mTitleFrames;
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - mTitleTime).count();
    if (seconds < 0.5) return;
    char time[32];
    std::snprintf(time, sizeof time, "%.1f ms", 1000 * seconds / mTitleFrames);
    mWindow.setTitle(std::string(sceneTable()[mScene].title) + " - " + time + " - " + mWindow.driver());
    mTitleTime = now;
    mTitleFrames = 0;
}

} // namespace tidalume::gallery
