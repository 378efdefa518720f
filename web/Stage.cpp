// The scenes for the page's JavaScript, which names a scene by its place in the table.

#include "gallery/Background.h"
#include "gallery/Player.h"

#include <algorithm>
#include <cstdio>
#include <emscripten/emscripten.h>
#include <memory>
#include <string>
#include <vector>

using namespace tidalume;
using namespace tidalume::gallery;

namespace {

// A scene in motion, and what its last setUp() was given.
struct Place {
    std::unique_ptr<Player> player;
    int width = 0;
    int height = 0;
    int background = 0; // number of the background
};

struct Stage {
    std::vector<Place> places = std::vector<Place>(sceneTable().size());
    Picture chosen;     // by the visitor; empty for pebbles
    Picture background; // chosen, or pebbles, at the size of the last setUp()
    int number = 1;     // of the background; rises with each one that is chosen
    int backgroundNumber = 0;
};

Stage& stage() {
    static Stage stage;
    return stage;
}

Place& place(int scene) {
    return stage().places.at(static_cast<std::size_t>(scene));
}

const Picture& backgroundOfSize(int width, int height) {
    Stage& s = stage();
    if (s.backgroundNumber != s.number || s.background.width != width || s.background.height != height) {
        s.background = makeBackground(s.chosen, width, height);
        s.backgroundNumber = s.number;
    }
    return s.background;
}

/// @return whether the scene was set up anew
bool fit(Place& place, int width, int height) {
    if (place.width == width && place.height == height && place.background == stage().number) return false;
    place.player->setUp(width, height, backgroundOfSize(width, height));
    place.width = width;
    place.height = height;
    place.background = stage().number;
    return true;
}

std::string quoted(const char* text) {
    std::string json = "\"";
    for (; *text != '\0'; ++text) {
        if (*text == '"' || *text == '\\') json += '\\';
        json += *text;
    }
    return json + '"';
}

template <typename Items, typename Describe>
std::string list(const Items& items, Describe describe) {
    std::string json;
    for (const auto& item : items)
        json += (json.empty() ? "[" : ",") + describe(item);
    return json.empty() ? "[]" : json + ']';
}

std::string describe(const Parameter& parameter) {
    char range[96];
    std::snprintf(range, sizeof range, R"("minimum":%g,"maximum":%g,"initial":%g)",
                  static_cast<double>(parameter.minimum), static_cast<double>(parameter.maximum),
                  static_cast<double>(parameter.initial));
    return "{\"name\":" + quoted(parameter.name) + ",\"label\":" + quoted(parameter.label) +
           ",\"choices\":" + list(parameter.choices, quoted) + ',' + range + '}';
}

std::string describe(const SceneEntry& entry) {
    const Player player(entry, 1);
    return "{\"name\":" + quoted(entry.name) + ",\"title\":" + quoted(entry.title) +
           ",\"sentence\":" + quoted(entry.sentence) +
           ",\"showsBackground\":" + (entry.showsBackground ? "true" : "false") + ",\"parameters\":" +
           list(player.parameters(), [](const Parameter& parameter) { return describe(parameter); }) + '}';
}

} // namespace

extern "C" {

/// The scene table with each scene's parameters, as JSON.
EMSCRIPTEN_KEEPALIVE const char* stageScenes() {
    static const std::string text = list(sceneTable(), [](const SceneEntry& entry) { return describe(entry); });
    return text.c_str();
}

/// Starts a scene, anew if it was there.
EMSCRIPTEN_KEEPALIVE void stageStart(int scene, unsigned seed) {
    place(scene) = Place();
    place(scene).player = std::make_unique<Player>(sceneTable().at(static_cast<std::size_t>(scene)), seed);
}

EMSCRIPTEN_KEEPALIVE void stageSet(int scene, const char* name, float value) {
    place(scene).player->set(name, value);
}

/// @param action  0 down, 1 move, 2 up
EMSCRIPTEN_KEEPALIVE void stageTouch(int scene, float x, float y, int action, int pointer) {
    place(scene).player->touch({x, y, static_cast<TouchAction>(action), pointer});
}

/// Draws the next step of a scene that fills a canvas of width x height pixels.
EMSCRIPTEN_KEEPALIVE void stageStep(int scene, int width, int height) {
    fit(place(scene), width, height);
    place(scene).player->drawStep();
}

/// Lets a scene that fills a canvas of width x height pixels go on for that many seconds.
/// @return the number of steps that were drawn; 0 leaves the canvas as it is
EMSCRIPTEN_KEEPALIVE int stageAdvance(int scene, int width, int height, double seconds) {
    // What is new shows itself even when no time passes.
    const bool isNew = fit(place(scene), width, height);
    return place(scene).player->advance(isNew ? std::max(seconds, Player::step) : seconds);
}

/// Room for a picture of the visitor's, to be filled with RGBA rows from the top before stageUseBackground().
EMSCRIPTEN_KEEPALIVE unsigned char* stageBackground(int width, int height) {
    stage().chosen = Picture(width, height);
    return stage().chosen.rgba.data();
}

/// Shows the visitor's picture from the next frame on; after stageBackground(0, 0), pebbles.
EMSCRIPTEN_KEEPALIVE void stageUseBackground() {
    ++stage().number;
}

EMSCRIPTEN_KEEPALIVE void stageContextLost() {
    for (Place& lost : stage().places) {
        if (!lost.player) continue;
        lost.player->contextLost();
        lost.width = 0;
    }
}

} // extern "C"
