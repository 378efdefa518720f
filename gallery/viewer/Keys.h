#pragma once

namespace tidalume::gallery {

/// What a person may do in the window, for --help and the window's own help.
constexpr const char* keys = R"(mouse, fingers  touch the scene
dropped file    a picture to be the background
h               help
left, right     other scenes, also 1 to 9
up, down        another setting
+, -            change the setting
p               another preset
g               another ground
space           pause
r               restart
s               save a PNG in the working directory
f               full screen
c               destroy the GL context and make a new one
q, Esc          quit)";

} // namespace tidalume::gallery
