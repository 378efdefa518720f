#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Any effect, as far as its life goes.
class AnyEffect {
  public:
    virtual ~AnyEffect() = default;
    virtual void init() = 0;
    virtual void setScreenSize(int width, int height) = 0;
    virtual void GLContextDestroyed() = 0;
    /// Every call that draws, disturbs or builds, with arguments that leave something to see.
    virtual void draw() = 0;
    /// The texture that the effect hands out; 0 when it draws into framebuffer 0.
    virtual unsigned int texture() = 0;
};

/// One row of the table of effects.
struct EffectCase {
    std::string name;
    std::string programClass;          ///< whose programs it draws with: cache names start with it
    std::vector<std::string> programs; ///< each named in the cache: the class, "Program" and this
    bool sharesPrograms;               ///< among all objects of the class
    int targets;                       ///< textures, each with a framebuffer, per object
    int channels;                      ///< of what it draws; a wider format holds anything in its further ones
    bool logsOnDraw;                   ///< writes log lines of its own when it draws
    std::function<std::unique_ptr<AnyEffect>()> make;
};

/// All effects; add a row for a new one.
const std::vector<EffectCase>& effectCases();
