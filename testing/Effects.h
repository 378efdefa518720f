#pragma once

#include <GLES3/gl3.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// Any effect, as far as its life goes, on a screen of 97 x 61 pixels. It is destroyed with its last copy.
struct AnyEffect {
    static constexpr int width = 97;
    static constexpr int height = 61;

    std::function<void()> init;
    std::function<void(int, int)> setScreenSize;
    std::function<void()> GLContextDestroyed;
    std::function<void()> draw;      ///< makes every call that draws, disturbs or builds
    std::function<GLuint()> texture; ///< that the effect draws into; 0 when that is framebuffer 0

    /// Initialises for the screen.
    /// @return itself
    AnyEffect prepare() const;

    /// Draws on a black framebuffer 0 and reads what came out, there or in the effect's texture.
    /// @param channels  how many of a pixel are read
    std::vector<float> picture(int channels = 3) const;
};

struct EffectCase {
    std::string name;
    AnyEffect (*make)();
    std::vector<std::string> programNames; ///< in the cache: the class, "Program" and this
    int targets = 0;                       ///< textures, each with a framebuffer, per object
    int channels = 3;                      ///< that count; a wider format holds anything in its further ones
    std::string programClass = name;       ///< whose programs it draws with
    bool sharesPrograms = true;            ///< among all objects of the class
};

inline void PrintTo(const EffectCase& effect, std::ostream* stream) {
    *stream << effect.name;
}

/// All effects, those of the water last; add a row for a new one.
const std::vector<EffectCase>& effectCases();
