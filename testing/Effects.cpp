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
#include "testing/Noise.h"
#include "testing/TestPeer.h"

#include <cstdlib>
#include <memory>

namespace {

using Operations = std::vector<Operation>;

/// What the operations are called with, in proportion to the screen.
struct Arguments {
    explicit Arguments(const Inputs& given) : inputs(given) {}

    Inputs inputs;
    float width = static_cast<float>(inputs.width);
    float height = static_cast<float>(inputs.height);
    float radius = 0.1F * width;
    float center[2] = {0.3F * width, 0.6F * height};
    float center2[2] = {0.7F * width, 0.4F * height};
    float color[4] = {1.0F, 0.5F, 0.25F, 0.5F};
    float rim[4] = {0.0F, 0.25F, 0.5F, 0.5F};
};

using Shared = std::shared_ptr<Arguments>;

Operations operations(const std::shared_ptr<Metaball2DRenderer>& effect, const Shared& a) {
    constexpr int count = 64;
    const auto balls = std::make_shared<std::vector<float>>(
        scatteredBalls(count, a->inputs.width, a->inputs.height, 0.8F * a->radius));
    return {{"Metaball2DRenderer::addMetaballs, 64 balls", [=] { effect->addMetaballs(balls->data(), count); },
             Measured{1.0, true}},
            {"Metaball2DRenderer::render", [=] { effect->render(a->color); }, Measured{1.03}}};
}

Operations operations(const std::shared_ptr<MetaballRenderer>& effect, const Shared& a) {
    return {{"MetaballRenderer::render", [=] {
                 srand48(1);
                 effect->push(a->center[0], a->center[1], 0);
                 effect->push(a->center2[0], a->center2[1], 7);
                 for (int i = 0; i < 8; ++i)
                     effect->render(20.0F, 12.5F);
             }}};
}

/// Discs last, so that they are seen.
Operations operations(const std::shared_ptr<VectorGraphicRenderer>& effect, const Shared& a) {
    const auto picture = static_cast<int>(a->inputs.picture);
    const float left = 0.1F * a->width;
    const float top = 0.1F * a->height;
    const float width = 0.8F * a->width;
    const float height = 0.8F * a->height;
    return {
        {"VectorGraphicRenderer::renderBitmapRectangle",
         [=] { effect->renderBitmapRectangle(left, top, width, height, a->inputs.picture); }, Measured{1.03}},
        {"VectorGraphicRenderer::renderAlphaMaskedBitmapRectangle",
         [=] { effect->renderAlphaMaskedBitmapRectangle(left, top, width, height, picture, picture); }, Measured{1.03}},
        {"VectorGraphicRenderer::renderRadialGradient",
         [=] { effect->renderRadialGradient(a->center[0], a->center[1], a->radius, a->color, a->height, a->rim); },
         Measured{0.90, true}},
        {"VectorGraphicRenderer::renderCircle",
         [=] { effect->renderCircle(a->center[0], a->center[1], a->radius, a->color); }, Measured{1.03}},
        {"VectorGraphicRenderer::renderBitmapCircle",
         [=] { effect->renderBitmapCircle(a->center[0], a->center[1], 2.0F * a->radius, a->color, a->inputs.picture); },
         Measured{1.03}},
    };
}

Operations operations(const std::shared_ptr<CometRenderer>& effect, const Shared& a) {
    return {{"CometRenderer::push",
             [=] {
                 srand48(1);
                 effect->push(0.5F * a->width, 0.45F * a->height, 0);
             }},
            {"CometRenderer::render", [=] { effect->render(0.95); }, Measured{}}};
}

Operations operations(const std::shared_ptr<IntensityMapBuilder>& effect, const Shared& a) {
    return {
        {"IntensityMapBuilder::addDropLine", [=] { effect->addDropLine(a->center, a->center2, a->radius, 0.1F, 0.0F); },
         Measured{1.0}},
        {"IntensityMapBuilder::addHorizontalWave",
         [=] { effect->addHorizontalWave(0.5F * a->height, a->radius, 0.1F, a->radius, 2.0F, 0.0F); }, Measured{1.0}},
    };
}

Operations operations(const std::shared_ptr<NormalMapBuilder>& effect, const Shared& a) {
    return {{"NormalMapBuilder::build", [=] { effect->build(a->inputs.heights); }, Measured{1.0, true}}};
}

Operations operations(const std::shared_ptr<ShallowWaterIterative>& effect, const Shared& a) {
    effect->setIterationCount(1);
    return {
        {"ShallowWaterIterative::addDrop", [=] { effect->addDrop(a->center, a->radius, 0.01F, 0.9F); }, Measured{1.0}},
        {"ShallowWaterIterative::addDropLine",
         [=] { effect->addDropLine(a->center, a->center2, a->radius, 0.01F, 0.9F); }, Measured{1.0}},
        {"ShallowWaterIterative::addHorizontalWave",
         [=] { effect->addHorizontalWave(0.5F * a->height, a->radius, 0.01F, a->radius, 2.0F, 0.9F); }, Measured{1.0}},
        {"ShallowWaterIterative::update, a pass", [=] { effect->update(); }, Measured{1.0, true}},
    };
}

Operations operations(const std::shared_ptr<ShallowWater>& effect, const Shared& a) {
    return {
        {"ShallowWater::addDropLine",
         [=] {
             float left[2] = {-0.4F, 0.2F};
             float right[2] = {0.4F, -0.2F};
             effect->addDropLine(left, right, 0.3F, 0.1F);
         },
         Measured{1.0}},
        {"ShallowWater::addDrop", [=] { effect->addDrop(a->center, a->radius, 0.1F); }, Measured{1.0}},
        {"ShallowWater::update, a step",
         [=] {
             TestPeer::mTime(*effect) = TestPeer::mNextStepTime(*effect) = 0.0F; // a step is due
             effect->update();
         },
         Measured{1.0, true}},
    };
}

Operations operations(const std::shared_ptr<ShallowWaterRenderer>& effect, const Shared& a) {
    effect->setTexture(static_cast<int>(a->inputs.picture));
    effect->setSpecular(0.5F, 50.0F);
    // Without textures the picture is black and the normal (-1, -1, -1): what is seen then is a highlight.
    if (a->inputs.normals == 0) effect->setLight(-1.0F, -1.0F, -9.0F);
    return {{"ShallowWaterRenderer::render", [=] { effect->render(a->inputs.heights, a->inputs.normals); },
             Measured{1.0, true}}};
}

enum Output { Screen, Target };

template <typename Effect, Output output = Screen, int... quality>
AnyEffect make() {
    const auto effect = std::make_shared<Effect>();
    return {[=] { effect->init(quality...); }, [=](int width, int height) { effect->setScreenSize(width, height); },
            [=] { effect->GLContextDestroyed(); },
            [=](const Inputs& inputs) { return operations(effect, std::make_shared<Arguments>(inputs)); },
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

void AnyEffect::draw() const {
    for (const Operation& operation : operations({width, height}))
        operation.run();
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

std::vector<float> scatteredBalls(int count, int width, int height, float radius) {
    const std::vector<float> places = tidalume::test::noise(1, 2 * count, 0.0F, 1.0F);
    std::vector<float> balls;
    for (auto place = places.begin(); place != places.end(); place += 2)
        balls.insert(balls.end(), {place[0] * static_cast<float>(width), place[1] * static_cast<float>(height), radius,
                                   0.0F, 0.0F, 0.0F});
    return balls;
}
