#include "testing/Effects.h"

#include "effects/comet/CometRenderer.h"
#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "headless/Pixels.h"

#include <cstdlib>
#include <memory>

namespace {

// What each effect draws on a screen.

float orange[4] = {1, 0.5F, 0, 1};
float ends[4] = {20, 10, 70, 15};

void draw(Metaball2DRenderer& effect) {
    float ball[6] = {48, 30, 20};
    effect.addMetaballs(ball, 1);
    effect.render(orange);
}

void draw(MetaballRenderer& effect) {
    srand48(1);
    effect.push(48, 30, 0);
    effect.push(60, 40, 7);
    for (int i = 0; i < 8; ++i)
        effect.render(20, 12.5F);
}

void draw(VectorGraphicRenderer& effect) {
    float rim[4] = {0, 0.5F, 1, 0.5F};
    effect.renderRadialGradient(48, 30, 5, orange, 40, rim);
    effect.renderCircle(20, 20, 12, orange);
    effect.renderBitmapCircle(70, 40, 12, orange, 0);
    effect.renderRotatedBitmapRectangle(5, 5, 10, 10, 0, 1);
    effect.renderRotatedAlphaMaskedBitmapRectangle(5, 40, 9, 9, 0, 2, 0);
}

void draw(CometRenderer& effect) {
    srand48(1);
    effect.push(48, 30, 0);
    effect.render(0.6);
}

void draw(IntensityMapBuilder& effect) {
    effect.addDropLine(ends, ends + 2, 9, 0.5F, 1);
    effect.addHorizontalWave(40, 8, 0.7F, 5, 2, 1);
}

void draw(NormalMapBuilder& effect) {
    effect.build(0);
}

void draw(ShallowWaterIterative& effect) {
    effect.addDrop(ends, 9, 0.5F, 0);
    effect.addDropLine(ends, ends + 2, 9, 0.5F, 1);
    effect.addHorizontalWave(40, 8, 0.7F, 5, 2, 1);
    effect.update();
}

void draw(ShallowWater& effect) {
    float line[4] = {-0.5F, -0.5F, 0.4F, 0.2F};
    effect.addDropLine(line, line + 2, 0.4F, 0.5F);
    effect.addDrop(ends, 20, 0.5F);
    for (int i = 0; i < 5; ++i)
        effect.update(); // two steps, wherever the time counter is
}

/// Of a picture of one white texel. In plain GL, since it must go on where a driver refuses.
void draw(ShallowWaterRenderer& effect) {
    const unsigned char white[4] = {255, 255, 255, 255};
    GLuint picture = 0;
    glGenTextures(1, &picture);
    glBindTexture(GL_TEXTURE_2D, picture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, white);
    effect.setTexture(static_cast<int>(picture));
    effect.render(0, 0);
    glDeleteTextures(1, &picture);
}

enum Output { Screen, Target };

template <typename Effect, Output output = Screen, int... quality>
AnyEffect make() {
    const auto effect = std::make_shared<Effect>();
    return {[=] { effect->init(quality...); }, [=](int width, int height) { effect->setScreenSize(width, height); },
            [=] { effect->GLContextDestroyed(); }, [=] { draw(*effect); },
            [=] {
                if constexpr (output == Target) return effect->getTexture();
                return GLuint{0};
            }};
}

} // namespace

AnyEffect AnyEffect::prepare() const {
    init();
    setScreenSize(width, height);
    return *this;
}

std::vector<float> AnyEffect::picture(int channels) const {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    draw();
    const auto pixels = texture() ? tidalume::headless::readTexture(texture(), width, height)
                                  : tidalume::headless::readFramebuffer(width, height);
    std::vector<float> drawn;
    for (int i = 0; i < width * height; ++i)
        drawn.insert(drawn.end(), &pixels.rgba[4 * i], &pixels.rgba[4 * i] + channels);
    return drawn;
}

const std::vector<EffectCase>& effectCases() {
    // Name and class; programs; targets; channels; whose programs they are, and whether objects share them.
    static const std::vector<EffectCase> cases = {
        {"Metaball2DRenderer", make<Metaball2DRenderer, Screen, 1>, {"Metaball", "Draw"}, 1},
        {"MetaballRenderer", make<MetaballRenderer, Screen, 1>, {"Metaball", "Draw"}, 1, 3, "Metaball2DRenderer"},
        {"VectorGraphicRenderer",
         make<VectorGraphicRenderer>,
         {"GradientFill", "Bitmap", "AlphaMaskedBitmap", "Circle", "BitmapCircle"}},
        {"CometRenderer", make<CometRenderer>, {"CoreOfComet", "TailOfComet"}},
        {"IntensityMapBuilder", make<IntensityMapBuilder, Target>, {"DropLine", "HorizontalWave"}, 1, 1},
        {"NormalMapBuilder", make<NormalMapBuilder, Target>, {""}, 1},
        {"ShallowWaterIterative",
         make<ShallowWaterIterative, Target>,
         {"Drop", "DropLine", "HorizontalWave", "Update"},
         2,
         2},
        {"ShallowWater", make<ShallowWater, Target>, {"Drop", "DropLine", "Update"}, 3, 1, "ShallowWater", false},
        {"ShallowWaterRenderer", make<ShallowWaterRenderer>, {""}},
    };
    return cases;
}
