#pragma once

#include "gallery/SceneTable.h"

#include <CLI/CLI.hpp>
#include <string>

/// What the command lines of the front ends share.
namespace tidalume::gallery {

/// Accepts the name of a scene.
CLI::Validator sceneCheck();

/// Accepts WIDTHxHEIGHT, such as 540x960, and stores both numbers; whether a driver can do them is for it to say.
CLI::Validator sizeCheck(int& width, int& height);

/// Accepts anything but the empty string, of which it says that nothing of the kind is named.
CLI::Validator namedCheck(const std::string& kind);

/// Parses the command line. Where it asks for help, or is wrong, prints that, in one line that begins with the
/// program's name, and ends the process with status 0 or 2.
void parse(CLI::App& app, int argc, char** argv);

} // namespace tidalume::gallery
