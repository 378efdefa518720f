#include "gallery/viewer/Viewer.h"

#include "gallery/Background.h"
#include "gallery/Ground.h"
#include "gallery/viewer/Keys.h"
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
        takeEvents();
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

// Nothing moves, or nobody sees it.
bool Viewer::isIdle() const {
    const bool isScriptOver = mNextEvent == mScript.size();
    const bool isStill = mPaused && !mNeedsRedraw && mSavePath.empty();
    return isScriptOver && !mQuit && (isStill || mWindow.isMinimised());
}

// Sleeps until there is an event, or a note is to go.
void Viewer::takeEvents() {
    constexpr int milliseconds = 100;
    SDL_Event event;
    if (isIdle()) {
        if (SDL_WaitEventTimeout(&event, mNote.empty() ? -1 : milliseconds) != 0) handle(event);
        mTitleTime = Clock::now();
        mTitleFrames = 0;
    }
    while (SDL_PollEvent(&event) != 0)
        handle(event);
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

void Viewer::play(const Drop& drop) {
    SDL_Event event = {};
    event.type = SDL_DROPFILE;
    event.drop.file = SDL_strdup(drop.path.c_str());
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
        adjust(event.key.keysym.sym);
        break;
    case SDL_DROPFILE:
        useBackground(event.drop.file);
        SDL_free(event.drop.file);
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
        mNeedsRedraw = true;
        break;
    case SDLK_h:
        mShowsHelp = !mShowsHelp;
        mNeedsRedraw = true;
        break;
    case SDLK_p:
        say(mControls->usePreset(*mPlayer));
        mSize = {}; // for its ground
        break;
    case SDLK_g:
        useNextGround();
        break;
    case SDLK_r:
        restart();
        break;
    case SDLK_s:
        mSavePath = freePath(sceneTable()[mScene].name);
        mSavesOverlay = false;
        break;
    case SDLK_f:
        mWindow.toggleFullScreen();
        break;
    case SDLK_c:
        mPlayer->contextLost();
        mOverlay->contextLost();
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

// Keys that may be held down.
void Viewer::adjust(SDL_Keycode key) {
    switch (key) {
    case SDLK_UP:
        say(mControls->choose(*mPlayer, -1));
        break;
    case SDLK_DOWN:
        say(mControls->choose(*mPlayer, 1));
        break;
    case SDLK_MINUS:
    case SDLK_KP_MINUS:
        say(mControls->change(*mPlayer, -1));
        break;
    case SDLK_PLUS:
    case SDLK_EQUALS: // the plus sign's key where it needs Shift
    case SDLK_KP_PLUS:
        say(mControls->change(*mPlayer, 1));
        break;
    default:
        break;
    }
}

void Viewer::useBackground(const std::string& path) {
    try {
        mBackground = headless::readPicture(path);
        say(path);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tidalume-viewer: %s\n", error.what());
        say(error.what());
    }
    mSize = {};
}

std::string Viewer::ground() const {
    return mGround.empty() ? groundOf(sceneTable()[mScene], mControls->preset(*mPlayer)) : mGround;
}

// After a picture comes the ground that it took the place of.
void Viewer::useNextGround() {
    const auto& table = groundTable();
    const auto shown = static_cast<std::size_t>(&groundNamed(ground()) - table.data());
    const Ground& next = table[mBackground.width > 0 ? shown : (shown + 1) % table.size()];
    mGround = next.name;
    mBackground = {};
    mSize = {};
    say(next.title);
}

// Shows a text for a while.
void Viewer::say(const std::string& note) {
    constexpr double seconds = 2.5;
    mNote = note;
    mNoteEnd = now() + seconds;
    mNeedsRedraw = true;
}

// In seconds: in a script's own time, where there is one.
double Viewer::now() const {
    return mScript.empty() ? static_cast<double>(SDL_GetTicks64()) / 1000 : mFrame * Player::timeStep;
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
    start();
    const std::string own = sceneTable()[scene].preset;
    mControls.emplace(*mPlayer, mSettings.preset.empty() ? own : mSettings.preset);
}

// With the settings that it has.
void Viewer::restart() {
    const std::unique_ptr<Player> last = std::move(mPlayer);
    ++mSeed;
    start();
    for (std::size_t i = 0; i < last->parameters().size; ++i)
        mPlayer->set(last->parameters()[i].name, last->get(static_cast<int>(i)));
}

void Viewer::start() {
    mPlayer = std::make_unique<Player>(sceneTable()[mScene], mSeed);
    apply(mSettings, *mPlayer);
    mSize = {};
    mPointers = {};
}

void Viewer::fitWindow() {
    const SDL_Point size = mWindow.drawableSize();
    if ((size.x == mSize.x && size.y == mSize.y) || size.x < 1 || size.y < 1) return;
    mPlayer->setUp(size.x, size.y, makeBackground(mBackground, ground(), size.x, size.y));
    mOverlay = std::make_unique<Overlay>(size.x, size.y,
                                         static_cast<float>(size.x) / static_cast<float>(mWindow.windowSize().x));
    mSize = size;
    mNeedsRedraw = true;
}

// Whether framebuffer 0 holds a new picture.
bool Viewer::draw() {
    if (mWindow.isMinimised()) return false;
    if (!mNote.empty() && now() >= mNoteEnd) {
        mNote.clear();
        mNeedsRedraw = true;
    }
    const bool hasStepped = !mPaused && advance() > 0;
    if (!hasStepped && !mNeedsRedraw && mSavePath.empty()) return false;
    if (!hasStepped) mPlayer->redraw();
    mNeedsRedraw = false;
    if (!mSavesOverlay) save();
    drawOverlay();
    if (mSavesOverlay) save();
    return true;
}

int Viewer::advance() {
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - mTime).count();
    mTime = now;
    if (mScript.empty()) return mPlayer->advance(seconds);
    mPlayer->drawStep();
    return 1;
}

void Viewer::drawOverlay() {
    const std::string help = mShowsHelp ? keys + ("\n\n" + mControls->describe(*mPlayer)) : "";
    mOverlay->draw(help, mNote.empty() && mPaused ? "Paused" : mNote);
}

void Viewer::save() {
    if (mSavePath.empty()) return;
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
    if (mPaused) {
        showTitle("paused");
        return;
    }
    ++mTitleFrames;
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - mTitleTime).count();
    if (seconds < 0.5) return;
    char time[32];
    std::snprintf(time, sizeof time, "%.1f ms", 1000 * seconds / mTitleFrames);
    showTitle(time);
    mTitleTime = now;
    mTitleFrames = 0;
}

void Viewer::showTitle(const std::string& state) {
    mWindow.setTitle(std::string(sceneTable()[mScene].title) + " - " + state + " - " + mWindow.driver());
}

} // namespace tidalume::gallery
