#include "gallery/Background.h"
#include "gallery/Player.h"
#include "gallery/headless/IndexPage.h"
#include "gallery/headless/Options.h"
#include "headless/Error.h"
#include "headless/HeadlessContext.h"
#include "headless/PictureFile.h"
#include "headless/Pixels.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

using namespace tidalume;
using namespace tidalume::gallery;
using headless::Error;
using headless::HeadlessContext;

namespace {

// Runs a body whose errors come from one argument, which they will name.
template <typename Body>
auto about(const std::string& argument, Body body) -> decltype(body()) {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        throw Error(argument + ": there is not enough memory");
    } catch (const std::exception& error) {
        throw Error(argument + ": " + error.what());
    }
}

void listScene(const SceneEntry& entry) {
    std::printf("%-12s %s\n", entry.name, entry.sentence);
    const Player player(entry, 1);
    std::printf("  presets:");
    for (const Preset& preset : player.presets())
        std::printf(" %s", preset.name);
    std::printf("\n");
    for (const Parameter& parameter : player.parameters()) {
        std::printf("  %-14s %s", parameter.name, parameter.sentence);
        if (parameter.choices.size == 0) {
            std::printf(" %g to %g%s%s, %g at first", static_cast<double>(parameter.minimum),
                        static_cast<double>(parameter.maximum), *parameter.unit ? " " : "", parameter.unit,
                        static_cast<double>(parameter.initial));
        }
        for (const char* choice : parameter.choices)
            std::printf(" %s", choice);
        std::printf("\n");
    }
}

void listScenes() {
    for (const SceneEntry& entry : sceneTable())
        listScene(entry);
}

std::ofstream openIndex(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Error(folder.string() + ": " + error.message());
    const std::filesystem::path path = folder / "index.html";
    std::ofstream file(path);
    if (!file) throw Error(path.string() + ": " + std::strerror(errno));
    return file;
}

Picture readBackground(const std::string& path) {
    if (path.empty()) return {};
    return about("--background", [&] { return headless::readPicture(path); });
}

Picture backgroundOf(const SceneEntry& entry, const std::string& preset, const Options& options,
                     const Picture& chosen) {
    const std::string ground = options.ground.empty() ? groundOf(entry, preset) : options.ground;
    return about("--size " + options.size,
                 [&] { return makeBackground(chosen, ground, options.width, options.height, options.seed); });
}

// The animation shows every second frame, 30 for each second: half the bytes, and still smooth.
bool isShown(int frame) {
    return frame % 2 == 0;
}

// For how long, in whole milliseconds that add up to 1/30 s for each shown frame.
int shownMilliseconds(int frame) {
    return (frame + 2) * 1000 / 60 - frame * 1000 / 60;
}

void checkErrors(const SceneEntry& entry) {
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) throw Error("--scene " + std::string(entry.name) + ": GL error " + std::to_string(error));
}

// Two files a scene: an animation, and its last frame.
void drawScene(const SceneEntry& entry, const Options& options, const Picture& background) {
    const auto start = std::chrono::steady_clock::now();
    const std::string path = (std::filesystem::path(options.out) / entry.name).string();
    Player player(entry, options.seed);
    apply(options.settings, player);
    player.setUp(options.width, options.height, background);
    for (int frame = 0; frame < options.ahead; ++frame)
        player.drawStep();

    headless::WebPAnimation animation(options.width, options.height);
    for (int frame = 0; frame < options.frames; ++frame) {
        player.drawStep();
        if (isShown(frame)) {
            animation.add(headless::framebufferPicture(options.width, options.height), shownMilliseconds(frame));
        }
    }
    about("--out", [&] {
        headless::writePng(path + ".png", headless::framebufferPicture(options.width, options.height));
        animation.write(path + ".webp");
    });
    checkErrors(entry);

    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("%-12s %d frames in %.1f s: %s.png, %s.webp\n", entry.name, options.frames, elapsed.count(),
                path.c_str(), path.c_str());
    std::fflush(stdout);
}

// A file a preset: the last frame, at half the size.
void drawPresets(const PresetRow& row, const Options& options, const Picture& chosen, HeadlessContext& context) {
    Options half = options;
    half.width = std::max(1, options.width / 2);
    half.height = std::max(1, options.height / 2);
    context.resize(half.width, half.height);
    for (const Preset& preset : row.presets) {
        Player player(*row.scene, options.seed);
        player.usePreset(preset.name);
        player.setUp(half.width, half.height, backgroundOf(*row.scene, preset.name, half, chosen));
        for (int frame = 0; frame < options.ahead + options.frames; ++frame)
            player.drawStep();
        const auto path = std::filesystem::path(options.out) / pictureOf(row, preset);
        about("--out",
              [&] { headless::writePng(path.string(), headless::framebufferPicture(half.width, half.height)); });
        checkErrors(*row.scene);
    }
    context.resize(options.width, options.height);
    std::printf("%-12s %zu presets\n", row.scene->name, row.presets.size);
    std::fflush(stdout);
}

void drawGallery(const Options& options) {
    const auto context = about("--size " + options.size,
                               [&] { return std::make_unique<HeadlessContext>(options.width, options.height); });
    const Picture chosen = readBackground(options.background);
    std::ofstream index = about("--out", [&] { return openIndex(options.out); });
    std::printf("Driver: %s\n", context->driver().c_str());
    for (const SceneEntry* scene : options.scenes)
        drawScene(*scene, options, backgroundOf(*scene, options.settings.preset, options, chosen));
    const std::vector<PresetRow> presets = presetRows(options);
    for (const PresetRow& row : presets)
        drawPresets(row, options, chosen, *context);
    about("--out " + options.out, [&] {
        index << indexPage(options, presets, context->driver()) << std::flush;
        if (!index) throw Error(std::strerror(errno));
    });
    std::printf("Open %s\n", (std::filesystem::path(options.out) / "index.html").c_str());
}

} // namespace

int main(int argc, char** argv) {
    const Options options = parseOptions(argc, argv);
    if (options.list) {
        listScenes();
        return 0;
    }
    try {
        drawGallery(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tidalume-gallery: %s\n", error.what());
        return 2;
    }
    return 0;
}
