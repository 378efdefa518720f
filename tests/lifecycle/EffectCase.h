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
    std::vector<std::string> cacheNames; ///< of its programs
    bool sharesPrograms;                 ///< among all objects of the class
    int targets;                         ///< textures, each with a framebuffer, per object
    int channels;                        ///< of what it draws; a wider format holds anything in its further ones
    bool logsOnDraw;                     ///< writes log lines of its own when it draws
    std::function<std::unique_ptr<AnyEffect>()> make;

    /// The class whose programs it draws with: cache names are made of it.
    std::string programClass() const { return cacheNames[0].substr(0, cacheNames[0].find("Program")); }
};

template <typename Effect>
class EffectAdapter : public AnyEffect {
  public:
    using Action = void (*)(Effect&);
    using Name = unsigned int (*)(Effect&);

    EffectAdapter(Action init, Action draw, Name texture) : mInit(init), mDraw(draw), mTexture(texture) {}

    void init() override { mInit(mEffect); }
    void setScreenSize(int width, int height) override { mEffect.setScreenSize(width, height); }
    void GLContextDestroyed() override { mEffect.GLContextDestroyed(); }
    void draw() override { mDraw(mEffect); }
    unsigned int texture() override { return mTexture(mEffect); }

  private:
    Effect mEffect;
    Action mInit;
    Action mDraw;
    Name mTexture;
};

template <typename Effect>
std::function<std::unique_ptr<AnyEffect>()> maker(void (*init)(Effect&), void (*draw)(Effect&),
                                                  unsigned int (*texture)(Effect&)) {
    return [=] { return std::make_unique<EffectAdapter<Effect>>(init, draw, texture); };
}

/// All effects; add a row for a new one.
const std::vector<EffectCase>& effectCases();
