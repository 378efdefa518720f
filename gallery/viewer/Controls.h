#pragma once

#include "gallery/Player.h"

#include <string>

namespace tidalume::gallery {

/// Changes the settings of a scene one at a time, as keys do. Each call is about a player of the same scene; the texts
/// are for people.
class Controls {
  public:
    /// @param preset  in use at first; where the scene has none of that name, its first one
    Controls(const Player& player, const std::string& preset);

    /// Goes on to another parameter, that many rows down or, below 0, up.
    /// @return its name and value
    std::string choose(const Player& player, int rows);

    /// Changes the chosen parameter by that many twentieths of its range, or goes that many choices on.
    /// @return its name and new value
    std::string change(Player& player, int steps) const;

    /// Uses the next preset.
    /// @return its title
    std::string usePreset(Player& player);

    /// The name of the preset in use.
    std::string preset(const Player& player) const { return player.presets()[mPreset].name; }

    /// All parameters with their values, one a line, and what the chosen one does.
    std::string describe(const Player& player) const;

  private:
    std::size_t mPreset = 0;
    std::size_t mChosen = 0;
};

} // namespace tidalume::gallery
