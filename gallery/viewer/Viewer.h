#pragma once

#include "gallery/viewer/Controls.h"
#include "gallery/viewer/Options.h"
#include "gallery/viewer/Overlay.h"
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

    bool isIdle() const;
    void takeEvents();
    void playScript();
    void play(const ScriptTouch& touch);
    void play(const KeyPress& press);
    void play(const Drop& drop);
    void play(const Resize& size) { mWindow.resize(size.width, size.height); }
    void play(const Save& save) {
        mSavePath = save.path;
        mSavesOverlay = true;
    }
    void play(const Quit&) { mQuit = true; }

    void handle(const SDL_Event& event);
    void press(SDL_Keycode key);
    void adjust(SDL_Keycode key);
    void useBackground(const std::string& path);
    std::string ground() const;
    void useNextGround();
    void say(const std::string& note);
    double now() const;
    void touch(SDL_FingerID id, TouchPhase phase, float x, float y);
    void touchByMouse(int x, int y, TouchPhase phase);

    void show(std::size_t scene);
    void restart();
    void start();
    void fitWindow();
    bool draw();
    int advance();
    void drawOverlay();
    void save();
    void updateTitle();
    void showTitle(const std::string& state);

    std::vector<ScriptEvent> mScript;
    Picture mBackground; // empty for none
    std::string mGround; // empty for each scene's own
    Settings mSettings;
    Window mWindow;
    std::size_t mScene = 0;
    std::uint32_t mSeed = 1;
    std::unique_ptr<Player> mPlayer;
    std::optional<Controls> mControls; // of this scene
    std::unique_ptr<Overlay> mOverlay; // of this size
    SDL_Point mSize = {};              // that the scene was set up for
    std::array<std::optional<SDL_FingerID>, pointerCount> mPointers;

    std::size_t mNextEvent = 0; // of the script
    int mFrame = 0;
    Clock::time_point mTime = Clock::now();
    bool mQuit = false;
    bool mPaused = false;
    bool mNeedsRedraw = true; // the window does not show the last picture
    bool mShowsHelp = false;
    std::string mNote; // shown for a while; empty for none
    double mNoteEnd = 0;
    std::string mSavePath; // for the next picture; empty for none
    bool mSavesOverlay = false;

    Clock::time_point mTitleTime = Clock::now();
    int mTitleFrames = 0;
};

} // namespace tidalume::gallery
