#include "headless/HeadlessContext.h"
#include "testing/Effects.h"

#include <future>
#include <gtest/gtest.h>

namespace {

using Pictures = std::vector<std::vector<float>>;

/// Several frames of some effects, in a context of their own.
Pictures draw(size_t firstEffect, size_t endEffect) {
    const tidalume::headless::HeadlessContext context(AnyEffect::width, AnyEffect::height);
    std::vector<AnyEffect> effects;
    for (size_t i = firstEffect; i < endEffect; ++i)
        effects.push_back(effectCases()[i].make().prepare());
    Pictures pictures;
    for (int frame = 0; frame < 4; ++frame) {
        for (const auto& effect : effects)
            pictures.push_back(effect.picture());
    }
    return pictures;
}

/// Comets and particles, which share the random stream, and both kinds of metaballs, which share programs, on the same
/// one.
TEST(Threads, ContextsWithSeparateClassesDrawAsIfAlone) {
    const Pictures graphics = draw(0, 4);
    const Pictures water = draw(4, effectCases().size());
    for (int round = 0; round < 20; ++round) {
        auto otherWater = std::async(std::launch::async, draw, 4, effectCases().size());
        EXPECT_TRUE(draw(0, 4) == graphics);
        EXPECT_TRUE(otherWater.get() == water);
    }
}

} // namespace
