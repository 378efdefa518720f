// The scenes for the page's JavaScript, which names scenes and grounds by their index in the tables, and players by
// numbers of its own.

#include "gallery/Ground.h"
#include "gallery/Player.h"

#include <cstdio>
#include <emscripten/emscripten.h>
#include <map>
#include <memory>
#include <string>

using namespace tidalume;
using namespace tidalume::gallery;

namespace {

struct RunningScene {
    std::unique_ptr<Player> player;
    Picture ground;
    // Of the last setUp(); 0 where it is due.
    int width = 0;
    int height = 0;
};

struct Stage {
    std::map<int, RunningScene> scenes; // by the number of the player
    Picture picture;                    // that JavaScript fills or reads
};

Stage& stage() {
    static Stage stage;
    return stage;
}

RunningScene& runningScene(int player) {
    return stage().scenes.at(player);
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
std::string describe(const Preset& preset, const SceneEntry& entry, Player& player) {
    player.usePreset(preset.name);
    int index = 0;
    return "{\"name\":" + quoted(preset.name) + ",\"title\":" + quoted(preset.title) +
           ",\"values\":" + list(player.parameters(), [&](const Parameter&) { return number(player.get(index++)); }) +
           ",\"ground\":" + quoted(groundOf(entry, preset.name)) + '}';
}

std::string describe(const SceneEntry& entry) {
    Player player(entry, 1);
    int index = 0;
    return "{\"name\":" + quoted(entry.name) + ",\"title\":" + quoted(entry.title) +
           ",\"sentence\":" + quoted(entry.sentence) + ",\"ground\":" + quoted(entry.ground) + ",\"parameters\":" +
           list(player.parameters(),
                [&](const Parameter& parameter) { return describe(parameter, player.get(index++)); }) +
           ",\"presets\":" +
           list(player.presets(), [&](const Preset& preset) { return describe(preset, entry, player); }) + '}';
}

std::string describe(const Ground& ground) {
    return "{\"name\":" + quoted(ground.name) + ",\"title\":" + quoted(ground.title) + '}';
}

} // namespace

extern "C" {

/// The scene table with each scene's parameters and presets, as JSON.
EMSCRIPTEN_KEEPALIVE const char* stageScenes() {
    static const std::string text = list(sceneTable(), [](const SceneEntry& entry) { return describe(entry); });
    return text.c_str();
}

/// The table of grounds, as JSON.
EMSCRIPTEN_KEEPALIVE const char* stageGrounds() {
    static const std::string text = list(groundTable(), [](const Ground& ground) { return describe(ground); });
    return text.c_str();
}

/// Starts a player of that scene, or starts it anew over the same ground.
EMSCRIPTEN_KEEPALIVE void stageStart(int player, int scene, unsigned seed) {
    RunningScene& running = stage().scenes[player];
    running.player = std::make_unique<Player>(sceneTable().at(static_cast<std::size_t>(scene)), seed);
    running.width = 0;
}

EMSCRIPTEN_KEEPALIVE void stageSet(int player, const char* name, float value) {
    runningScene(player).player->set(name, value);
}

/// @param phase  0 down, 1 move, 2 up, 3 cancelled
EMSCRIPTEN_KEEPALIVE void stageTouch(int player, float x, float y, int phase, int pointer) {
    runningScene(player).player->touch({x, y, static_cast<TouchPhase>(phase), pointer});
}

/// Memory for a picture: RGBA rows from the top, to be filled before stageShowGround().
EMSCRIPTEN_KEEPALIVE unsigned char* stagePicture(int width, int height) {
    stage().picture = Picture(width, height);
    return stage().picture.rgba.data();
}

/// Draws a ground into that memory.
EMSCRIPTEN_KEEPALIVE unsigned char* stageDrawGround(int ground, int width, int height) {
    stage().picture = groundTable().at(static_cast<std::size_t>(ground)).draw(width, height, 1);
    return stage().picture.rgba.data();
}

/// The picture in that memory is the player's ground from the next frame on, stretched over whatever size it has.
EMSCRIPTEN_KEEPALIVE void stageShowGround(int player) {
    runningScene(player).ground = std::move(stage().picture);
    runningScene(player).width = 0;
}

/// Sets a player that has a ground up for the lower left width x height pixels of the canvas.
/// @return whether the size or the ground was new, so that this took its time
EMSCRIPTEN_KEEPALIVE bool stageFit(int player, int width, int height) {
    RunningScene& running = runningScene(player);
    if (running.width == width && running.height == height) return false;
    running.player->setUp(width, height, running.ground);
    running.width = width;
    running.height = height;
    return true;
}

/// Draws the next step of a player that has been set up.
EMSCRIPTEN_KEEPALIVE void stageStep(int player) {
    runningScene(player).player->drawStep();
}

/// Whether stageAdvance() by that many seconds would draw.
EMSCRIPTEN_KEEPALIVE bool stageIsDue(int player, double seconds) {
    return runningScene(player).player->isDue(seconds);
}

/// Advances a player that has been set up.
/// @return the number of steps that were drawn; 0 leaves the canvas as it is
EMSCRIPTEN_KEEPALIVE int stageAdvance(int player, double seconds) {
    return runningScene(player).player->advance(seconds);
}

EMSCRIPTEN_KEEPALIVE void stageContextLost() {
    for (auto& [number, lost] : stage().scenes) {
        lost.player->contextLost();
        lost.width = 0;
    }
}

} // extern "C"
