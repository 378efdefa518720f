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

namespace {

// Rows draw on a screen of 97 x 61 pixels.

/// Two texels beside each other, black and white. In plain GL, since it must go on where a driver refuses.
GLuint twoTexels() {
    const unsigned char texels[8] = {0, 0, 0, 255, 255, 255, 255, 255};
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    return texture;
}

const EffectCase metaball2DRenderer = {
    "Metaball2DRenderer",
    {"Metaball2DRendererProgramMetaball", "Metaball2DRendererProgramDraw"},
    true,
    1,
    3,
    false,
    maker<Metaball2DRenderer>([](Metaball2DRenderer& effect) { effect.init(1.0F); },
                              [](Metaball2DRenderer& effect) {
                                  float ball[6] = {48.0F, 30.0F, 20.0F};
                                  float color[4] = {1.0F, 0.5F, 0.0F, 1.0F};
                                  effect.addMetaballs(ball, 1);
                                  effect.render(color);
                              },
                              [](Metaball2DRenderer&) { return 0U; }),
};

const EffectCase metaballRenderer = {
    "MetaballRenderer",
    {"Metaball2DRendererProgramMetaball", "Metaball2DRendererProgramDraw"},
    true,
    1,
    3,
    false,
    maker<MetaballRenderer>([](MetaballRenderer& effect) { effect.init(1.0F); },
                            [](MetaballRenderer& effect) {
                                effect.push(48.0F, 30.0F, 0);
                                effect.render(20.0F, 12.5F);
                            },
                            [](MetaballRenderer&) { return 0U; }),
};

const EffectCase vectorGraphicRenderer = {
    "VectorGraphicRenderer",
    {"VectorGraphicRendererProgramGradientFill", "VectorGraphicRendererProgramBitmap",
     "VectorGraphicRendererProgramAlphaMaskedBitmap", "VectorGraphicRendererProgramCircle",
     "VectorGraphicRendererProgramBitmapCircle"},
    true,
    0,
    4,
    false,
    maker<VectorGraphicRenderer>([](VectorGraphicRenderer& effect) { effect.init(); },
                                 [](VectorGraphicRenderer& effect) {
                                     float color[4] = {1.0F, 0.5F, 0.0F, 1.0F};
                                     float rim[4] = {0.0F, 0.5F, 1.0F, 0.5F};
                                     effect.renderRadialGradient(48.0F, 30.0F, 5.0F, color, 40.0F, rim);
                                     effect.renderCircle(20.0F, 20.0F, 12.0F, color);
                                     effect.renderBitmapCircle(70.0F, 40.0F, 12.0F, color, 0);
                                     effect.renderRotatedBitmapRectangle(5.0F, 5.0F, 10.0F, 10.0F, 0, 1);
                                     effect.renderRotatedAlphaMaskedBitmapRectangle(5.0F, 40.0F, 9.0F, 9.0F, 0, 2, 0);
                                 },
                                 [](VectorGraphicRenderer&) { return 0U; }),
};

const EffectCase cometRenderer = {
    "CometRenderer",
    {"CometRendererProgramCoreOfComet", "CometRendererProgramTailOfComet"},
    true,
    0,
    3,
    false,
    maker<CometRenderer>([](CometRenderer& effect) { effect.init(); },
                         [](CometRenderer& effect) {
                             srand48(1);
                             effect.push(48.0F, 30.0F, 0);
                             effect.render(0.6);
                         },
                         [](CometRenderer&) { return 0U; }),
};

const EffectCase intensityMapBuilder = {
    "IntensityMapBuilder",
    {"IntensityMapBuilderProgramDropLine", "IntensityMapBuilderProgramHorizontalWave"},
    true,
    1,
    1,
    false,
    maker<IntensityMapBuilder>([](IntensityMapBuilder& effect) { effect.init(); },
                               [](IntensityMapBuilder& effect) {
                                   float ends[4] = {20.0F, 10.0F, 70.0F, 15.0F};
                                   effect.addDropLine(ends, ends + 2, 9.0F, 0.5F, 1.0F);
                                   effect.addHorizontalWave(40.0F, 8.0F, 0.7F, 5.0F, 2.0F, 1.0F);
                               },
                               [](IntensityMapBuilder& effect) { return effect.getTexture(); }),
};

const EffectCase normalMapBuilder = {
    "NormalMapBuilder",
    {"NormalMapBuilderProgram"},
    true,
    1,
    3,
    false,
    maker<NormalMapBuilder>([](NormalMapBuilder& effect) { effect.init(); },
                            [](NormalMapBuilder& effect) { effect.build(0); },
                            [](NormalMapBuilder& effect) { return effect.getTexture(); }),
};

const EffectCase shallowWaterIterative = {
    "ShallowWaterIterative",
    {"ShallowWaterIterativeProgramDrop", "ShallowWaterIterativeProgramDropLine",
     "ShallowWaterIterativeProgramHorizontalWave", "ShallowWaterIterativeProgramUpdate"},
    true,
    2,
    2,
    false,
    maker<ShallowWaterIterative>([](ShallowWaterIterative& effect) { effect.init(); },
                                 [](ShallowWaterIterative& effect) {
                                     float ends[4] = {20.0F, 10.0F, 70.0F, 15.0F};
                                     effect.addDrop(ends, 9.0F, 0.5F, 0.0F);
                                     effect.addDropLine(ends, ends + 2, 9.0F, 0.5F, 1.0F);
                                     effect.addHorizontalWave(40.0F, 8.0F, 0.7F, 5.0F, 2.0F, 1.0F);
                                     effect.update();
                                 },
                                 [](ShallowWaterIterative& effect) { return effect.getTexture(); }),
};

const EffectCase shallowWater = {
    "ShallowWater",
    {"ShallowWaterProgramDrop", "ShallowWaterProgramDropLine", "ShallowWaterProgramUpdate"},
    false,
    3,
    1,
    true,
    maker<ShallowWater>([](ShallowWater& effect) { effect.init(); },
                        [](ShallowWater& effect) {
                            float ends[4] = {-0.5F, -0.5F, 0.4F, 0.2F};
                            float center[2] = {40.0F, 20.0F};
                            effect.addDropLine(ends, ends + 2, 0.4F, 0.5F);
                            effect.addDrop(center, 20.0F, 0.5F);
                            for (int i = 0; i < 5; ++i)
                                effect.update(); // two steps, wherever the time counter is
                        },
                        [](ShallowWater& effect) { return effect.getTexture(); }),
};

const EffectCase shallowWaterRenderer = {
    "ShallowWaterRenderer",
    {"ShallowWaterRendererProgram"},
    true,
    0,
    3,
    false,
    maker<ShallowWaterRenderer>([](ShallowWaterRenderer& effect) { effect.init(); },
                                [](ShallowWaterRenderer& effect) {
                                    const GLuint picture = twoTexels();
                                    effect.setTexture(static_cast<int>(picture));
                                    effect.render(0, 0);
                                    glDeleteTextures(1, &picture);
                                },
                                [](ShallowWaterRenderer&) { return 0U; }),
};

} // namespace

const std::vector<EffectCase>& effectCases() {
    static const std::vector<EffectCase> cases = {metaball2DRenderer,    metaballRenderer,    vectorGraphicRenderer,
                                                  cometRenderer,         intensityMapBuilder, normalMapBuilder,
                                                  shallowWaterIterative, shallowWater,        shallowWaterRenderer};
    return cases;
}
