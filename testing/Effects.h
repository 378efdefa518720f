#pragma once

#include <GLES3/gl3.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// What operations draw with.
struct Inputs {
    int width = 0; ///< of the screen, in pixels
    int height = 0;
    GLuint heights = 0; ///< textures; 0: there is none
    GLuint normals = 0;
    GLuint picture = 0;
};

/// How the benchmark measures an operation against its plain form in reference/.
struct Measured {
    double goal = 0.0;     ///< largest share of the plain form's time; 0: none is set
    bool hasFloor = false; ///< reference::floors has a form for it
};

/// A call of an effect that draws, disturbs or builds.
struct Operation {
    std::string name;
    std::function<void()> run;
    std::optional<Measured> measured = std::nullopt; ///< nothing: it is not
};

/// Any effect, as far as its life goes. It is destroyed with its last copy and the last of its operations.
struct AnyEffect {
    /// The screen of the tests, in pixels.
    static constexpr int width = 97;
    static constexpr int height = 61;

    std::function<void()> init;
    std::function<void(int, int)> setScreenSize;
    std::function<void()> GLContextDestroyed;
    /// All operations, in an order in which each has what it needs. They draw the same each time they begin anew.
    std::function<std::vector<Operation>(const Inputs&)> operations;
    std::function<GLuint()> texture; ///< that the effect draws into; 0 when that is framebuffer 0

    /// Initialises for the tests' screen.
    /// @return itself
    AnyEffect prepare() const;

    /// Runs every operation once, on the tests' screen.
    void draw() const;

    /// Draws on a black framebuffer 0 and reads what came out, there or in the effect's texture.
    /// @param channels  how many of a pixel are read
    std::vector<float> picture(int channels = 3) const;
};

struct EffectCase {
    std::string name;
    AnyEffect (*make)();
    std::vector<std::string> programNames; ///< in the cache: the class, "Program" and this
    int targets = 0;                       ///< textures, each with a framebuffer, per object
    int channels = 3;                      ///< that count; a fallback format holds anything in its further ones
    std::string programClass = name;       ///< whose programs it draws with
    bool sharesPrograms = true;            ///< among all objects of the class
};

inline void PrintTo(const EffectCase& effect, std::ostream* stream) {
    *stream << effect.name;
}

/// All effects, those of the water last; add a row for a new one.
const std::vector<EffectCase>& effectCases();

/// Balls at random places of a screen, the same each time, as `Metaball2DRenderer::addMetaballs` takes them.
std::vector<float> scatteredBalls(int count, int width, int height, float radius);
