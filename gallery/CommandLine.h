#pragma once

#include "commandline/Parse.h"
#include "gallery/Settings.h"

#include <string>

/// What the command lines of the front ends share besides.
namespace tidalume::gallery {

/// Accepts the name of a scene.
CLI::Validator sceneCheck();

/// Adds --background and --ground, the one a picture file, the other the name of a ground; only one may be given.
void addBackgroundOptions(CLI::App& app, std::string& background, std::string& ground);

/// Adds --preset and --set, which are checked against the scenes once these are known.
void addSettingsOptions(CLI::App& app, Settings& settings);

/// Accepts WIDTHxHEIGHT, such as 540x960, and stores both numbers; whether a driver can do them is for it to say.
CLI::Validator sizeCheck(int& width, int& height);

} // namespace tidalume::gallery
