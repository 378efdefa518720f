#include "gallery/CommandLine.h"

#include "gallery/Ground.h"
#include "gallery/Size.h"

#include <algorithm>

namespace tidalume::gallery {

namespace {

template <typename Entry>
std::string namesIn(const std::vector<Entry>& table) {
    std::string names;
    for (const Entry& entry : table)
        names += (names.empty() ? "" : ", ") + std::string(entry.name);
    return names;
}

// Accepts a name in a table of scenes, say.
template <typename Entry>
CLI::Validator nameCheck(const std::string& kind, const std::vector<Entry>& table) {
    const auto check = [kind, &table](const std::string& name) -> std::string {
        const bool known =
            std::any_of(table.begin(), table.end(), [&](const Entry& entry) { return name == entry.name; });
        return known ? "" : "there is no " + kind + " \"" + name + "\"; the " + kind + "s are: " + namesIn(table);
    };
    return {check, ""};
}

} // namespace

CLI::Validator sceneCheck() {
    return nameCheck("scene", sceneTable());
}

void addBackgroundOptions(CLI::App& app, std::string& background, std::string& ground) {
    CLI::Option* file =
        app.add_option("--background", background,
                       "Picture for the scenes that show one, PNG, JPEG or WebP, cut to the size's shape; transparent "
                       "parts turn black")
            ->type_name("FILE")
            ->check(namedCheck("file"));
    app.add_option("--ground", ground,
                   "Background that the program draws, for every scene that shows one, instead of its own: " +
                       namesIn(groundTable()))
        ->type_name("NAME")
        ->check(nameCheck("ground", groundTable()))
        ->excludes(file);
}

void addSettingsOptions(CLI::App& app, Settings& settings) {
    app.add_option("--preset", settings.preset,
                   "Settings that go together, in scenes that have them; tidalume-gallery --list names them")
        ->type_name("NAME")
        ->check(namedCheck("preset"));
    app.add_option("--set", settings.values,
                   "Give a parameter a value, in scenes that have it; may be given several times; tidalume-gallery "
                   "--list names them")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

CLI::Validator sizeCheck(int& width, int& height) {
    const auto check = [&width, &height](const std::string& text) -> std::string {
        const bool read = parseSize(text, width, height);
        return read ? "" : "\"" + text + "\" is not WIDTHxHEIGHT in pixels, each 1 or more, such as 540x960";
    };
    return {check, ""};
}

} // namespace tidalume::gallery
