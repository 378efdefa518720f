#include "effects/comet/CometRenderer.h"
#include "effects/metaball/Metaball2DRenderer.h"
#include "effects/metaball/MetaballRenderer.h"
#include "effects/vector/VectorGraphicRenderer.h"
#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/lifecycle/EffectCase.h"

#include <GLES3/gl3.h>

#include <cstdlib>
#include <type_traits>
#include <utility>

namespace {

// What each effect draws on a screen of 97 x 61 pixels.

float orange[4] = {1.0F, 0.5F, 0.0F, 1.0F};
float ends[4] = {20.0F, 10.0F, 70.0F, 15.0F};

void draw(Metaball2DRenderer& effect) {
    float ball[6] = {48.0F, 30.0F, 20.0F};
    effect.addMetaballs(ball, 1);
    effect.render(orange);
}

void draw(MetaballRenderer& effect) {
    effect.push(48.0F, 30.0F, 0);
    effect.render(20.0F, 12.5F);
}

void draw(VectorGraphicRenderer& effect) {
    float rim[4] = {0.0F, 0.5F, 1.0F, 0.5F};
    effect.renderRadialGradient(48.0F, 30.0F, 5.0F, orange, 40.0F, rim);
    effect.renderCircle(20.0F, 20.0F, 12.0F, orange);
    effect.renderBitmapCircle(70.0F, 40.0F, 12.0F, orange, 0);
    effect.renderRotatedBitmapRectangle(5.0F, 5.0F, 10.0F, 10.0F, 0, 1);
    effect.renderRotatedAlphaMaskedBitmapRectangle(5.0F, 40.0F, 9.0F, 9.0F, 0, 2, 0);
}

void draw(CometRenderer& effect) {
    srand48(1);
    effect.push(48.0F, 30.0F, 0);
    effect.render(0.6);
}

void draw(IntensityMapBuilder& effect) {
    effect.addDropLine(ends, ends + 2, 9.0F, 0.5F, 1.0F);
    effect.addHorizontalWave(40.0F, 8.0F, 0.7F, 5.0F, 2.0F, 1.0F);
}

void draw(NormalMapBuilder& effect) {
    effect.build(0);
}

void draw(ShallowWaterIterative& effect) {
    effect.addDrop(ends, 9.0F, 0.5F, 0.0F);
    effect.addDropLine(ends, ends + 2, 9.0F, 0.5F, 1.0F);
    effect.addHorizontalWave(40.0F, 8.0F, 0.7F, 5.0F, 2.0F, 1.0F);
    effect.update();
}

void draw(ShallowWater& effect) {
    float line[4] = {-0.5F, -0.5F, 0.4F, 0.2F};
    effect.addDropLine(line, line + 2, 0.4F, 0.5F);
    effect.addDrop(ends, 20.0F, 0.5F);
    for (int i = 0; i < 5; ++i)
        effect.update(); // two steps, wherever the time counter is
}

/// A picture of two texels, black and white. In plain GL, since it must go on where a driver refuses.
void draw(ShallowWaterRenderer& effect) {
    const unsigned char texels[8] = {0, 0, 0, 255, 255, 255, 255, 255};
    GLuint picture = 0;
    glGenTextures(1, &picture);
    glBindTexture(GL_TEXTURE_2D, picture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    effect.setTexture(static_cast<int>(picture));
    effect.render(0, 0);
    glDeleteTextures(1, &picture);
}

enum class DrawsInto { Screen, Texture };

template <typename Effect, DrawsInto target>
class Adapter : public AnyEffect {
  public:
    void init() override {
        if constexpr (std::is_invocable_v<decltype(&Effect::init), Effect, float>) {
            mEffect.init(1.0F);
        } else {
            mEffect.init();
        }
    }
    void setScreenSize(int width, int height) override { mEffect.setScreenSize(width, height); }
    void GLContextDestroyed() override { mEffect.GLContextDestroyed(); }
    void draw() override { ::draw(mEffect); }
    unsigned int texture() override {
        if constexpr (target == DrawsInto::Texture) return mEffect.getTexture();
        return 0;
    }

  private:
    Effect mEffect;
};

template <typename Effect, DrawsInto target = DrawsInto::Screen>
EffectCase row(const char* name, const char* programClass, std::vector<std::string> programs, bool sharesPrograms,
               int targets, int channels, bool logsOnDraw = false) {
    return {name,    programClass, std::move(programs), sharesPrograms,
            targets, channels,     logsOnDraw,          [] { return std::make_unique<Adapter<Effect, target>>(); }};
}

} // namespace

const std::vector<EffectCase>& effectCases() {
    constexpr DrawsInto texture = DrawsInto::Texture;
    static const std::vector<EffectCase> cases = {
        row<Metaball2DRenderer>("Metaball2DRenderer", "Metaball2DRenderer", {"Metaball", "Draw"}, true, 1, 3),
        row<MetaballRenderer>("MetaballRenderer", "Metaball2DRenderer", {"Metaball", "Draw"}, true, 1, 3),
        row<VectorGraphicRenderer>("VectorGraphicRenderer", "VectorGraphicRenderer",
                                   {"GradientFill", "Bitmap", "AlphaMaskedBitmap", "Circle", "BitmapCircle"}, true, 0,
                                   4),
        row<CometRenderer>("CometRenderer", "CometRenderer", {"CoreOfComet", "TailOfComet"}, true, 0, 3),
        row<IntensityMapBuilder, texture>("IntensityMapBuilder", "IntensityMapBuilder", {"DropLine", "HorizontalWave"},
                                          true, 1, 1),
        row<NormalMapBuilder, texture>("NormalMapBuilder", "NormalMapBuilder", {""}, true, 1, 3),
        row<ShallowWaterIterative, texture>("ShallowWaterIterative", "ShallowWaterIterative",
                                            {"Drop", "DropLine", "HorizontalWave", "Update"}, true, 2, 2),
        row<ShallowWater, texture>("ShallowWater", "ShallowWater", {"Drop", "DropLine", "Update"}, false, 3, 1, true),
        row<ShallowWaterRenderer>("ShallowWaterRenderer", "ShallowWaterRenderer", {""}, true, 0, 3),
    };
    return cases;
}
