// The scenes for the page's JavaScript, which names a scene by its index in the table.

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

struct RunningScene {
    std::unique_ptr<Player> player;
    // Of the last setUp():
    int width = 0;
    int height = 0;
    int backgroundVersion = 0;
};

struct Stage {
    std::vector<RunningScene> scenes = std::vector<RunningScene>(sceneTable().size());
    Picture chosen;        // by the visitor; empty for each scene's own ground
    int chosenVersion = 1; // rises with each choice
};

Stage& stage() {
    static Stage stage;
    return stage;
}

const SceneEntry& sceneEntry(int scene) {
    return sceneTable().at(static_cast<std::size_t>(scene));
}

RunningScene& runningScene(int scene) {
    return stage().scenes.at(static_cast<std::size_t>(scene));
}

/// @return whether the scene was set up anew
bool fit(int scene, int width, int height) {
    const int version = stage().chosenVersion;
    RunningScene& running = runningScene(scene);
    if (running.width == width && running.height == height && running.backgroundVersion == version) return false;
    running.player->setUp(width, height, makeBackground(stage().chosen, sceneEntry(scene).ground, width, height));
    running.width = width;
    running.height = height;
    running.backgroundVersion = version;
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

std::string number(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
    return text;
}

std::string describe(const Parameter& parameter, float initial) {
    return "{\"name\":" + quoted(parameter.name) + ",\"label\":" + quoted(parameter.label) +
           ",\"unit\":" + quoted(parameter.unit) + ",\"sentence\":" + quoted(parameter.sentence) +
           ",\"choices\":" + list(parameter.choices, quoted) + ",\"minimum\":" + number(parameter.minimum) +
           ",\"maximum\":" + number(parameter.maximum) + ",\"initial\":" + number(initial) + '}';
}

// With the values of all parameters, in their order.
std::string describe(const Preset& preset, Player& player) {
    player.usePreset(preset.name);
    int index = 0;
    return "{\"name\":" + quoted(preset.name) + ",\"title\":" + quoted(preset.title) +
           ",\"values\":" + list(player.parameters(), [&](const Parameter&) { return number(player.get(index++)); }) +
           '}';
}

std::string describe(const SceneEntry& entry) {
    Player player(entry, 1);
    int index = 0;
    return "{\"name\":" + quoted(entry.name) + ",\"title\":" + quoted(entry.title) +
           ",\"sentence\":" + quoted(entry.sentence) + ",\"parameters\":" +
           list(player.parameters(),
                [&](const Parameter& parameter) { return describe(parameter, player.get(index++)); }) +
           ",\"presets\":" + list(player.presets(), [&](const Preset& preset) { return describe(preset, player); }) +
           '}';
}

} // namespace

extern "C" {

/// The scene table with each scene's parameters and presets, as JSON.
EMSCRIPTEN_KEEPALIVE const char* stageScenes() {
    static const std::string text = list(sceneTable(), [](const SceneEntry& entry) { return describe(entry); });
    return text.c_str();
}

/// Starts a scene, or starts it anew.
EMSCRIPTEN_KEEPALIVE void stageStart(int scene, unsigned seed) {
    runningScene(scene) = RunningScene();
    runningScene(scene).player = std::make_unique<Player>(sceneEntry(scene), seed);
}

EMSCRIPTEN_KEEPALIVE void stageSet(int scene, const char* name, float value) {
    runningScene(scene).player->set(name, value);
}

/// @param phase  0 down, 1 move, 2 up, 3 cancelled
EMSCRIPTEN_KEEPALIVE void stageTouch(int scene, float x, float y, int phase, int pointer) {
    runningScene(scene).player->touch({x, y, static_cast<TouchPhase>(phase), pointer});
}

/// Draws the next step of a scene that fills a canvas of width x height pixels.
EMSCRIPTEN_KEEPALIVE void stageStep(int scene, int width, int height) {
    fit(scene, width, height);
    runningScene(scene).player->drawStep();
}

/// Advances a scene that fills a canvas of width x height pixels by that many seconds.
/// @return the number of steps that were drawn; 0 leaves the canvas as it is
EMSCRIPTEN_KEEPALIVE int stageAdvance(int scene, int width, int height, double seconds) {
    // A new size or background shows even when no time passes.
    const bool isNew = fit(scene, width, height);
    return runningScene(scene).player->advance(isNew ? std::max(seconds, Player::timeStep) : seconds);
}

/// Memory for the visitor's picture: RGBA rows from the top, to be filled before stageUseBackground().
EMSCRIPTEN_KEEPALIVE unsigned char* stageBackground(int width, int height) {
    stage().chosen = Picture(width, height);
    return stage().chosen.rgba.data();
}

/// Shows the visitor's picture from the next frame on; after stageBackground(0, 0), each scene's own ground.
EMSCRIPTEN_KEEPALIVE void stageUseBackground() {
    ++stage().chosenVersion;
}

EMSCRIPTEN_KEEPALIVE void stageContextLost() {
    for (RunningScene& lost : stage().scenes) {
        if (!lost.player) continue;
        lost.player->contextLost();
        lost.width = 0;
    }
}

} // extern "C"
