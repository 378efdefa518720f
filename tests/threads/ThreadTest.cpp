#include "headless/HeadlessContext.h"
#include "testing/Effects.h"

#include <future>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

using Pictures = std::vector<std::vector<float>>;

/// The effects of one thread: they share the random stream or programs.
const std::set<std::string> graphicEffects = {"Metaball2DRenderer", "MetaballRenderer", "VectorGraphicRenderer",
                                              "CometRenderer"};

/// Several frames of the graphic effects, or of the others, in a context of their own.
Pictures draw(bool isGraphic) {
    const tidalume::headless::HeadlessContext context(AnyEffect::width, AnyEffect::height);
    std::vector<AnyEffect> effects;
    for (const EffectCase& effect : effectCases()) {
        if ((graphicEffects.count(effect.name) != 0) == isGraphic) effects.push_back(effect.make().prepare());
    }
    Pictures pictures;
    for (int frame = 0; frame < 4; ++frame) {
        for (const auto& effect : effects)
            pictures.push_back(effect.picture());
    }
    return pictures;
}

TEST(Threads, ContextsWithSeparateClassesDrawAsIfAlone) {
    const Pictures graphics = draw(true);
    const Pictures water = draw(false);
    EXPECT_FALSE(graphics.empty() || water.empty());
    for (int round = 0; round < 20; ++round) {
        auto otherWater = std::async(std::launch::async, draw, false);
        EXPECT_TRUE(draw(true) == graphics);
        EXPECT_TRUE(otherWater.get() == water);
    }
}

} // namespace
