#pragma once

#include "gallery/Player.h"

#include <string>
#include <vector>

namespace tidalume::gallery {

/// What a command line sets about scenes: a preset, and single parameters after it.
struct Settings {
    std::string preset;              ///< empty for the scene's own
    std::vector<std::string> values; ///< "NAME=VALUE": a number, or the name of a choice
};

/// Sets what the player's scene has, and leaves the rest out.
void apply(const Settings& settings, Player& player);

/// Why some of the settings can be made in none of the scenes, as one line; empty where each can in at least one.
std::string complaint(const Settings& settings, const std::vector<const SceneEntry*>& scenes);

} // namespace tidalume::gallery
