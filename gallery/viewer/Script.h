#pragma once

#include "gallery/Scene.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tidalume::gallery {

struct KeyPress {
    int key; ///< an SDL_Keycode
};

struct Resize {
    int width;
    int height;
};

struct Drop {
    std::string path;
};

struct Save {
    std::string path;
};

struct Quit {};

/// A touch of a script: by the mouse, or by a finger where the number of one is given.
struct ScriptTouch {
    float x = 0; ///< in pixels from the left
    float y = 0; ///< in pixels from the top
    TouchPhase phase = TouchPhase::Down;
    std::optional<int> finger;
};

/// Something that happens before a frame is drawn.
struct ScriptEvent {
    int frame;
    std::variant<ScriptTouch, KeyPress, Drop, Resize, Save, Quit> what;
};

/// Reads a script, one event a line: FRAME down|move|up X Y [FINGER], FRAME key NAME, FRAME resize WxH,
/// FRAME drop FILE, FRAME save FILE, FRAME quit. Frames must not go back. Empty lines and lines that begin with # are
/// ignored.
///
/// Throws Error, with the path and the number of the line, for a file that cannot be read or a line that is none of
/// these.
std::vector<ScriptEvent> readScript(const std::string& path);

} // namespace tidalume::gallery
