#include "effects/comet/CometRenderer.h"
#include "effects/metaball/Metaball2DRenderer.h"
#include "tests/lifecycle/EffectCase.h"

#include <cstdlib>

namespace {

// Rows draw on a screen of 97 x 61 pixels.

const EffectCase metaball2DRenderer = {
    "Metaball2DRenderer",
    {"Metaball2DRendererProgramMetaball", "Metaball2DRendererProgramDraw"},
    true,
    1,
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

const EffectCase cometRenderer = {
    "CometRenderer",
    {"CometRendererProgramCoreOfComet", "CometRendererProgramTailOfComet"},
    true,
    0,
    false,
    maker<CometRenderer>([](CometRenderer& effect) { effect.init(); },
                         [](CometRenderer& effect) {
                             srand48(1);
                             effect.push(48.0F, 30.0F, 0);
                             effect.render(0.6);
                         },
                         [](CometRenderer&) { return 0U; }),
};

} // namespace

const std::vector<EffectCase>& effectCases() {
    static const std::vector<EffectCase> cases = {metaball2DRenderer, cometRenderer};
    return cases;
}
