#include "gallery/CommandLine.h"

#include "gallery/Size.h"

#include <algorithm>

namespace tidalume::gallery {

namespace {

std::string sceneNames() {
    std::string names;
    for (const SceneEntry& entry : sceneTable())
        names += (names.empty() ? "" : ", ") + std::string(entry.name);
    return names;
}

} // namespace

CLI::Validator sceneCheck() {
    const auto check = [](const std::string& name) -> std::string {
        const auto& table = sceneTable();
        const bool known =
            std::any_of(table.begin(), table.end(), [&](const SceneEntry& entry) { return name == entry.name; });
        return known ? "" : "there is no scene \"" + name + "\"; the scenes are: " + sceneNames();
    };
    return {check, ""};
}

CLI::Validator sizeCheck(int& width, int& height) {
    const auto check = [&width, &height](const std::string& text) -> std::string {
        const bool read = parseSize(text, width, height);
        return read ? "" : "\"" + text + "\" is not WIDTHxHEIGHT in pixels, each 1 or more, such as 540x960";
    };
    return {check, ""};
}

} // namespace tidalume::gallery
