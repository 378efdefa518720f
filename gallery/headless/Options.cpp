#include "gallery/headless/Options.h"

#include "gallery/CommandLine.h"

#include <algorithm>
#include <limits>

namespace tidalume::gallery {

namespace {

std::vector<const SceneEntry*> chosenScenes(const std::vector<std::string>& names) {
    std::vector<const SceneEntry*> scenes;
    for (const SceneEntry& entry : sceneTable()) {
        if (names.empty() || std::count(names.begin(), names.end(), entry.name) > 0) scenes.push_back(&entry);
    }
    return scenes;
}

} // namespace

Options parseOptions(int argc, char** argv) {
    Options options;
    std::vector<std::string> names;
    CLI::App app("Draws every effect of Tidalume into pictures, without a window.", "tidalume-gallery");
    app.add_flag("--list", options.list, "Print the scenes' names and what they show");
    app.add_option("--scene", names, "Draw this scene only; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->check(sceneCheck());
    app.add_option("--size", options.size, "Size of the pictures in pixels")
        ->type_name("WxH")
        ->check(sizeCheck(options.width, options.height))
        ->capture_default_str();
    app.add_option("--ahead", options.ahead,
                   "Number of frames, up to 36000, that pass unseen, so that animations do not begin empty")
        ->type_name("N")
        ->check(numberCheck(0, 36000))
        ->capture_default_str();
    app.add_option("--frames", options.frames,
                   "Number of frames after these, up to 36000, 60 for each second; the PNG shows the last")
        ->type_name("N")
        ->check(numberCheck(1, 36000))
        ->capture_default_str();
    addBackgroundOptions(app, options.background, options.ground);
    addSettingsOptions(app, options.settings);
    app.add_option("--seed", options.seed, "Where chance begins; the same number gives the same pictures")
        ->type_name("N")
        ->check(numberCheck(0, std::numeric_limits<std::uint32_t>::max()))
        ->capture_default_str();
    app.add_option("--out", options.out, "Folder for the pictures and their index.html")
        ->type_name("DIR")
        ->check(namedCheck("folder"))
        ->capture_default_str();

    app.callback([&] {
        options.scenes = chosenScenes(names);
        const std::string why = complaint(options.settings, options.scenes);
        if (!why.empty()) throw CLI::ValidationError(why);
    });
    parse(app, argc, argv);
    return options;
}

} // namespace tidalume::gallery
