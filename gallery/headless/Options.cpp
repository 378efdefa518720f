#include "gallery/headless/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iostream>

namespace tidalume::gallery {

namespace {

// "540x960" into two numbers; whether a driver can do them is for the driver to say.
bool parseSize(const std::string& text, int& width, int& height) {
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, width);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != 'x') return false;
    const auto second = std::from_chars(first.ptr + 1, end, height);
    return second.ec == std::errc() && second.ptr == end;
}

std::string sceneNames() {
    std::string names;
    for (const SceneEntry& entry : sceneTable())
        names += (names.empty() ? "" : ", ") + std::string(entry.name);
    return names;
}

std::vector<const SceneEntry*> chosenScenes(const std::vector<std::string>& names) {
    std::vector<const SceneEntry*> scenes;
    for (const SceneEntry& entry : sceneTable()) {
        if (names.empty() || std::count(names.begin(), names.end(), entry.name) > 0) scenes.push_back(&entry);
    }
    return scenes;
}

std::string checkScene(const std::string& name) {
    const auto& table = sceneTable();
    const bool known =
        std::any_of(table.begin(), table.end(), [&](const SceneEntry& entry) { return name == entry.name; });
    return known ? "" : "there is no scene \"" + name + "\"; the scenes are: " + sceneNames();
}

} // namespace

Options parseOptions(int argc, char** argv) {
    Options options;
    std::vector<std::string> names;
    const auto checkSize = [&options](const std::string& text) -> std::string {
        const bool read = parseSize(text, options.width, options.height);
        return read ? "" : "\"" + text + "\" is not WIDTHxHEIGHT in pixels, such as 540x960";
    };

    CLI::App app("Draws every effect of Tidalume into pictures, without a window.", "tidalume-gallery");
    app.add_flag("--list", options.list, "Print the scenes' names and what they show");
    app.add_option("--scene", names, "Draw this scene only; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->check(CLI::Validator(checkScene, ""));
    app.add_option("--size", options.size, "Size of the pictures in pixels")
        ->type_name("WxH")
        ->check(CLI::Validator(checkSize, ""))
        ->capture_default_str();
    app.add_option("--frames", options.frames, "Number of frames, 60 for each second; the PNG shows the last")
        ->type_name("N")
        ->check(CLI::Range(1, 36000))
        ->capture_default_str();
    app.add_option("--background", options.background,
                   "Picture for the scenes that show one, PNG, JPEG or WebP, cut to the size's shape; transparent "
                   "parts turn black (pebbles are drawn if none is given)")
        ->type_name("FILE")
        ->check(CLI::Validator([](const std::string& path) { return path.empty() ? "no file is named" : ""; }, ""));
    app.add_option("--seed", options.seed, "Where chance begins; the same number gives the same pictures")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--out", options.out, "Folder for the pictures and their index.html")
        ->type_name("DIR")
        ->check(CLI::Validator([](const std::string& path) { return path.empty() ? "no folder is named" : ""; }, ""))
        ->capture_default_str();

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        std::exit(app.exit(help));
    } catch (const CLI::ParseError& error) {
        std::string message = error.what();
        std::replace(message.begin(), message.end(), '\n', ' ');
        std::cerr << "tidalume-gallery: " << message << '\n';
        std::exit(2);
    }
    options.scenes = chosenScenes(names);
    return options;
}

} // namespace tidalume::gallery
