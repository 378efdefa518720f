#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "reference/Water.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

using plain::HorizontalWave, plain::Line;

/// A line that begins where it ends.
struct Drop : Line {};

// The calls that paint disturbances. IntensityMapBuilder has none for a drop, and paints it as a line.

template <typename Effect>
void paint(Effect& effect, Line line, float preserveWeight) {
    effect.addDropLine(line.begin, line.end, line.radius, line.strength, preserveWeight);
}

void paint(ShallowWaterIterative& water, Drop drop, float preserveWeight) {
    water.addDrop(drop.begin, drop.radius, drop.strength, preserveWeight);
}

template <typename Effect>
void paint(Effect& effect, const HorizontalWave& wave, float preserveWeight) {
    const auto& [width, center, radius, strength, waveRadius, waveCount] = wave;
    effect.addHorizontalWave(center, radius, strength, waveRadius, waveCount, preserveWeight);
}

/// Makes a height field ready, in a random state with heights up to a crest.
template <typename Effect>
Field makeRough(Effect& effect, int width, int height, GLenum channels, float crest = 0.25F) {
    makeReady(width, height, effect);
    const std::vector<float> state = noise(1, 2 * width * height, -crest, crest);
    glBindTexture(GL_TEXTURE_2D, effect.getTexture());
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, channels, GL_FLOAT, state.data());
    return {effect.getTexture(), width, height};
}

/// IntensityMapBuilder replaces what lies in a rectangle, the simulation raises all heights and keeps the velocities.
template <typename Effect, typename Shape>
Comparison disturbed(int width, int height, Shape shape, float preserveWeight) {
    constexpr bool replaces = std::is_same_v<Effect, IntensityMapBuilder>;
    Effect effect;
    const Field old = makeRough(effect, width, height, replaces ? GL_RED : GL_RG);
    paint(effect, shape, preserveWeight);
    return compare(headless::readTexture(effect.getTexture(), width, height), [&](int column, int row) -> Values {
        const double x = column + 0.5, y = height - row - 0.5;
        if (replaces) return {shape.reaches(x, y) ? shape.at(x, y) : old.at(column, row)};
        return {old.at(column, row) * preserveWeight + shape.at(x, y), old.at(column, row, 1)};
    });
}

Comparison iterativePass(int width, int height, float crest) {
    ShallowWaterIterative water;
    const Field old = makeRough(water, width, height, GL_RG, crest);
    water.setIterationCount(1);
    water.update();
    return compare(headless::readTexture(water.getTexture(), width, height),
                   [&](int x, int y) { return plain::iterativePass(old, x, y); });
}

Comparison pondDrop(int width, int height) {
    Line drop = {{66, 158}, {66, 158}, 40, -0.8};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, GL_RED);
    pond.addDrop(drop.begin, drop.radius * 2.0F, drop.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height),
                   [&](int x, int y) -> Values { return {plain::pondDrop(state, drop, x, y)}; });
}

/// The state before the newest is what the newest is made of.
Comparison pondLine(int width, int height) {
    Line line = {{1, 1}, {-0.4, 0.3}, 0.7, 0.25};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, GL_RED);
    runStep(pond);
    pond.addDropLine(line.begin, line.end, line.radius, line.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height),
                   [&](int x, int y) -> Values { return {plain::pondLine(state, line, x, y)}; });
}

Comparison pondStep(int width, int height, const plain::Physics& physics) {
    ShallowWater pond;
    pond.setPhysics(physics.waveSpeed, physics.viscosity, physics.gridSpacing, physics.timeStep);
    const Field older = makeRough(pond, width, height, GL_RED);
    runStep(pond);
    const Field newer(pond.getTexture(), width, height);
    runStep(pond);
    return compare(headless::readTexture(pond.getTexture(), width, height),
                   [&](int x, int y) -> Values { return {plain::pondStep(newer, older, physics, x, y)}; });
}

/// Of heights whose texture may have another size than the screen: they are filtered, a texel of theirs apart.
Comparison normals(int width, int height, int columns, int rows) {
    const Field heights = noiseTexture(GL_RG16F, columns, rows, -1.0F, 1.0F);
    NormalMapBuilder builder;
    makeReady(width, height, builder);
    builder.setHeightMax(2.0F);
    builder.build(heights.texture);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        return plain::normalColor(heights, (column + 0.5) / width, (row + 0.5) / height, 2.0);
    });
}

/// Noise as normals, most of which point upwards, and as heights, over a picture whose red and green are its own
/// coordinates, into a framebuffer of half floats.
Comparison refraction(int width, int height, bool flip, float specular = 0.0F) {
    const Field heights = noiseTexture(GL_RG16F, width, height, -0.2F, 0.4F);
    const Field normalMap = noiseTexture(GL_RGBA16F, width, height, 0.25F, 1.0F); // n * 0.5 + 0.5, of any length
    std::vector<float> coordinates;
    for (int i = 0; i < width * height; ++i)
        for (const float value : {(i % width + 0.5F) / width, (i / width + 0.5F) / height, 0.25F, 0.5F})
            coordinates.push_back(value);
    const GLuint target = headless::makeTexture(GL_RGBA16F, width, height, coordinates);
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target, 0);

    ShallowWaterRenderer renderer;
    makeReady(width, height, renderer);
    renderer.setTexture(static_cast<int>(headless::makeTexture(GL_RGBA16F, width, height, coordinates)));
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setBGFlip(flip);
    renderer.setHeightMax(50.0F);
    renderer.setLight(6.07e20F, -4.21e20F, 12.3e20F); // at a right angle to no normal of the map
    renderer.setLight(0.0F, -0.0F, 0.0F);             // no direction, and no highlight: ignored
    renderer.setLight(0.0F, INFINITY, 1.0F);
    renderer.setSpecular(specular, 2.0F);
    for (const float bad : {-1.0F, NAN, INFINITY}) {
        renderer.setSpecular(bad, 1.0F);
        renderer.setSpecular(0.9F, bad < 0.0F ? 0.0F : bad);
    }
    renderer.render(heights.texture, normalMap.texture);
    return compare(headless::readTexture(target, width, height), [&](int x, int y) -> Values {
        const Values place = plain::refractedPlace(heights, normalMap, 50.0, x, y);
        return Values{place[0], flip ? 1.0 - place[1] : place[1], 0.25, 0.5} +
               plain::highlight(normalMap, {6.07, -4.21, 12.3}, specular, x, y);
    });
}

/// A step of a half float from 0.5 to 1, as drivers may truncate, and a hundredth of it for the floats on the way.
constexpr double step = 1.01 * 0.5 / 1024.0;
constexpr Tolerance oneStep = {step, "one step of a half float below 1, as drivers may truncate"};
constexpr Tolerance rippleStep = {step / 128, "one step of a half float below 1/128, as drivers may truncate"};
constexpr Tolerance twoSteps = {2 * step, "one step of a half float below 2, as drivers may truncate"};
constexpr Tolerance fourSteps = {4 * step, "one step of a half float below 2, and linear filtering between its texels"};

// The corners of their rectangles lie on quarters of a pixel, which every driver keeps.
const Drop corner = {{{0.5, 159}, {0.5, 159}, 30.25, -0.9}};
const Line border = {{-10, 41.25}, {90, 12}, 14, 0.4};
const HorizontalWave waves = {64, 158, 9.25, 0.45, 12, 3};

constexpr plain::Physics thinWater = {2.0, 0.05, 0.4, 0.13};
constexpr plain::Physics thickWater = {-1.5, 0.8, 0.7, 0.25};

const PictureTable table({
    {"intensity_drop_64x160", [] { return disturbed<IntensityMapBuilder>(64, 160, corner, 0.3F); }, oneStep},
    {"intensity_line_97x61", [] { return disturbed<IntensityMapBuilder>(97, 61, border, 0.3F); }, oneStep},
    {"intensity_wave_64x160", [] { return disturbed<IntensityMapBuilder>(64, 160, waves, 0.3F); }, oneStep},
    {"iterative_drop_64x160", [] { return disturbed<ShallowWaterIterative>(64, 160, corner, 0.0F); }, oneStep},
    {"iterative_line_97x61", [] { return disturbed<ShallowWaterIterative>(97, 61, border, 0.75F); }, oneStep},
    {"iterative_wave_64x160", [] { return disturbed<ShallowWaterIterative>(64, 160, waves, 1.0F); }, oneStep},
    {"iterative_pass_64x160", [] { return iterativePass(64, 160, 0.25F); }, twoSteps},
    {"iterative_pass_of_ripples_64x128", [] { return iterativePass(64, 128, 0.001F); }, rippleStep},
    {"pond_drop_64x160", [] { return pondDrop(64, 160); }, oneStep},
    {"pond_line_97x61", [] { return pondLine(97, 61); }, oneStep},
    {"pond_step_97x61", [] { return pondStep(97, 61, thinWater); }, twoSteps},
    {"pond_step_of_thick_water_64x160", [] { return pondStep(64, 160, thickWater); }, twoSteps},
    {"normals_64x160", [] { return normals(64, 160, 64, 160); }, oneStep},
    {"normals_of_fewer_heights_97x61", [] { return normals(97, 61, 31, 13); }, oneStep},
    {"refraction_97x61", [] { return refraction(97, 61, false); }, fourSteps},
    {"refraction_flipped_64x160", [] { return refraction(64, 160, true); }, fourSteps},
    {"refraction_with_highlights_97x61", [] { return refraction(97, 61, false, 0.1F); }, fourSteps},
});

} // namespace

} // namespace tidalume::pictures
