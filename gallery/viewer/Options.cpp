#include "gallery/viewer/Options.h"

#include "gallery/CommandLine.h"
#include "gallery/viewer/Keys.h"

#include <algorithm>

namespace tidalume::gallery {

namespace {

constexpr const char* aboutScripts = R"(

A script is a text file, one event a line, each with the number of the frame before which it happens:
  0 down 100 200     the mouse button goes down at a place in pixels; a further number makes it a finger
  5 move 120 210
  9 up 120 210
  20 key c           as named by SDL: c, Right, Space, ...
  25 drop a.jpg      a file is dropped
  30 resize 320x480
  40 save a.png      what the window shows, with help and notes, which the key s leaves out
  60 quit
With a script every frame is 1/60 s, however long it takes to draw.)";

std::size_t placeOf(const std::string& name) {
    const auto& table = sceneTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const SceneEntry& entry) { return name == entry.name; });
    return static_cast<std::size_t>(found - table.begin());
}

} // namespace

ViewerOptions parseViewerOptions(int argc, char** argv) {
    ViewerOptions options;
    std::string scene = sceneTable().front().name;
    std::string size;

    CLI::App app("Shows the effects of Tidalume in a window, to be touched.", "tidalume-viewer");
    app.footer(std::string("In the window:\n") + keys + aboutScripts);
    app.add_option("--scene", scene, "The first scene")->type_name("NAME")->check(sceneCheck())->capture_default_str();
    app.add_option("--size", size,
                   "Size of the window in pixels of the desktop; 540x960 or what of it fits, where none is given")
        ->type_name("WxH")
        ->check(sizeCheck(options.width, options.height));
    addBackgroundOptions(app, options.background, options.ground);
    addSettingsOptions(app, options.settings);
    app.add_option("--script", options.script, "Play recorded events from a file")
        ->type_name("FILE")
        ->check(namedCheck("file"));
    app.callback([&] {
        options.scene = placeOf(scene);
        const std::string why = complaint(options.settings, {&sceneTable()[options.scene]});
        if (!why.empty()) throw CLI::ValidationError(why);
    });
    parse(app, argc, argv);
    return options;
}

} // namespace tidalume::gallery
