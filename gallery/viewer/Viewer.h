#pragma once

#include "gallery/Player.h"
#include "gallery/viewer/Options.h"
#include "gallery/viewer/Script.h"
#include "gallery/viewer/Window.h"

#include <chrono>

namespace tidalume::gallery {

/// Shows the scenes in a window, one at a time, until a person or a script ends it.
class Viewer {
  public:
    /// Throws Error where a file cannot be read or no window opened.
    explicit Viewer(const ViewerOptions& options);

    void run();

  private:
    using Clock = std::chrono::steady_clock;

    void playScript();
    void play(const ScriptTouch& touch);
    void play(const KeyPress& press);
    void play(const Resize& size) { mWindow.resize(size.width, size.height); }
    void play(const Save& save) { mSavePath = save.path; }
    void play(const Quit&) { mQuit = true; }

    void handle(const SDL_Event& event);
    void press(SDL_Keycode key);
    void touch(SDL_FingerID id, TouchPhase phase, float x, float y);
    void touchByMouse(int x, int y, TouchPhase phase);

    void show(std::size_t scene);
    void fitWindow();
    bool draw();
    int advance();
    bool redraw();
    void save();
    void updateTitle();

    std::vector<ScriptEvent> mScript;
    Picture mBackground; // empty for none
    std::string mGround; // empty for each scene's own
    Settings mSettings;
    Window mWindow;
    std::size_t mScene = 0;
    std::uint32_t mSeed = 1;
    std::unique_ptr<Player> mPlayer;
    SDL_Point mSize = {}; // that the scene was set up for
    std::array<std::optional<SDL_FingerID>, pointerCount> mPointers;

    std::size_t mNextEvent = 0; // of the script
    int mFrame = 0;
    Clock::time_point mTime = Clock::now();
    bool mQuit = false;
    bool mPaused = false;
    bool mNeedsRedraw = true; // the window does not show the last picture
    Picture mPausedPicture;   // shown during a pause; empty before the one step that begins it
    std::string mSavePath;    // for the next picture; empty for none

    Clock::time_point mTitleTime = Clock::now();
    int mTitleFrames = 0;
};

} // namespace tidalume::gallery
