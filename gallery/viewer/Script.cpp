#include "gallery/viewer/Script.h"

#include "gallery/Size.h"
#include "headless/Error.h"

#include <SDL.h>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace tidalume::gallery {

namespace {

using headless::Error;

std::optional<TouchPhase> touchPhase(const std::string& verb) {
    if (verb == "down") return TouchPhase::Down;
    if (verb == "move") return TouchPhase::Move;
    if (verb == "up") return TouchPhase::Up;
    return std::nullopt;
}

ScriptTouch parseTouch(TouchPhase phase, std::istream& words) {
    ScriptTouch touch = {0, 0, phase, std::nullopt};
    if (!(words >> touch.x >> touch.y)) throw Error("two coordinates are expected");
    int finger = 0;
    if (words >> finger) touch.finger = finger;
    if (!words.eof() || finger < 0 || finger >= pointerCount) {
        throw Error("the finger is a number from 0 to " + std::to_string(pointerCount - 1));
    }
    return touch;
}

// The rest of the line, which may hold spaces.
std::string rest(std::istream& words) {
    std::string text;
    std::getline(words >> std::ws, text);
    if (text.empty()) throw Error("something is missing at the end");
    return text;
}

KeyPress parseKey(const std::string& name) {
    const SDL_Keycode key = SDL_GetKeyFromName(name.c_str());
    if (key == SDLK_UNKNOWN) throw Error("there is no key \"" + name + "\"");
    return {key};
}

Resize parseResize(const std::string& text) {
    Resize size = {};
    if (!parseSize(text, size.width, size.height)) throw Error("\"" + text + "\" is not WIDTHxHEIGHT in pixels");
    return size;
}

ScriptEvent parseLine(const std::string& line) {
    std::istringstream words(line);
    ScriptEvent event = {};
    std::string verb;
    if (!(words >> event.frame >> verb) || event.frame < 0) {
        throw Error("a line begins with the number of a frame and what happens");
    }
    if (const auto phase = touchPhase(verb)) {
        event.what = parseTouch(*phase, words);
    } else if (verb == "key") {
        event.what = parseKey(rest(words));
    } else if (verb == "drop") {
        event.what = Drop{rest(words)};
    } else if (verb == "resize") {
        event.what = parseResize(rest(words));
    } else if (verb == "save") {
        event.what = Save{rest(words)};
    } else if (verb == "quit") {
        event.what = Quit{};
    } else {
        throw Error("\"" + verb + "\" is none of down, move, up, key, drop, resize, save and quit");
    }
    return event;
}

} // namespace

std::vector<ScriptEvent> readScript(const std::string& path) {
    std::ifstream file(path);
    std::vector<ScriptEvent> script;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        try {
            const int previous = script.empty() ? 0 : script.back().frame;
            script.push_back(parseLine(line));
            if (script.back().frame < previous) throw Error("the frames go back");
        } catch (const Error& error) {
            throw Error(path + ", line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (!file.eof()) throw Error(path + ": " + std::strerror(errno));
    return script;
}

} // namespace tidalume::gallery
