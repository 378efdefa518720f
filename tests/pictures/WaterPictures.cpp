#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/pictures/Field.h"

namespace tidalume::pictures {
namespace {

constexpr double pi = 3.141592653589793;

double bump(double distance, double radius, double strength) {
    return (std::cos(std::min(1.0, distance / radius) * pi) * 0.5 + 0.5) * strength;
}

// Disturbances, in pixels from the top-left corner: what they add at a point, whether it lies in the rectangle that
// IntensityMapBuilder paints, and the call that paints them.

/// With round ends.
struct Line {
    float begin[2], end[2], radius, strength;

    double at(double x, double y) const {
        const double dx = end[0] - begin[0], dy = end[1] - begin[1];
        const double along = (x - begin[0]) * dx + (y - begin[1]) * dy;
        const double t = dx == 0.0 && dy == 0.0 ? 0.0 : std::clamp(along / (dx * dx + dy * dy), 0.0, 1.0);
        return bump(std::hypot(x - begin[0] - t * dx, y - begin[1] - t * dy), radius, strength);
    }

    bool reaches(double x, double y) const {
        return x > std::min(begin[0], end[0]) - radius && x < std::max(begin[0], end[0]) + radius &&
               y > std::min(begin[1], end[1]) - radius && y < std::max(begin[1], end[1]) + radius;
    }

    template <typename Effect>
    void paint(Effect& effect, float preserveWeight) {
        effect.addDropLine(begin, end, radius, strength, preserveWeight);
    }
};

/// A line that begins where it ends.
struct Drop : Line {
    using Line::paint;
    void paint(ShallowWaterIterative& water, float preserveWeight) {
        water.addDrop(begin, radius, strength, preserveWeight);
    }
};

/// On a screen of a width.
struct HorizontalWave {
    int width;
    float center, radius, strength, waveRadius, waveCount;

    double at(double x, double y) const {
        const double curve = center + std::sin(x / width * pi * 2.0 * waveCount) * waveRadius;
        return bump(std::fabs(curve - y), radius, strength);
    }

    bool reaches(double, double y) const { return std::fabs(y - center) < waveRadius + radius; }

    template <typename Effect>
    void paint(Effect& effect, float preserveWeight) {
        effect.addHorizontalWave(center, radius, strength, waveRadius, waveCount, preserveWeight);
    }
};

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
    shape.paint(effect, preserveWeight);
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
    return compare(headless::readTexture(water.getTexture(), width, height), [&](int x, int y) -> Values {
        const double v = (old.at(x, y, 1) + (old.neighbours(x, y) * 0.25 - old.at(x, y)) * 2.0) * 0.99;
        return {old.at(x, y) + v - (v == 0.0 ? 0.0 : std::copysign(0.00001, v)), v};
    });
}

// The pond, whose y runs upwards.

Comparison pondDrop(int width, int height) {
    Line drop = {{66, 158}, {66, 158}, 40, -0.8};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, GL_RED);
    pond.addDrop(drop.begin, drop.radius * 2.0F, drop.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        return {std::pow(state.at(x, y), 2.0) + std::pow(drop.at(x + 0.5, y + 0.5), 2.0)};
    });
}

/// Ends and radius are in normalised device coordinates; the state before the newest is what the newest is made of.
Comparison pondLine(int width, int height) {
    Line line = {{1, 1}, {-0.4, 0.3}, 0.7, 0.25};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, GL_RED);
    runStep(pond);
    pond.addDropLine(line.begin, line.end, line.radius, line.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        double sum = state.at(x, y);
        for (const float* end : {line.begin, line.end}) {
            const double dx = (x + 0.5) / width - (end[0] * 0.5 + 0.5);
            const double dy = (y + 0.5) / height - (end[1] * 0.5 + 0.5);
            sum += bump(std::hypot(dx, dy), line.radius * 0.5, line.strength * 0.4);
        }
        return {std::min<double>(sum, line.strength)};
    });
}

Comparison pondStep(int width, int height, double waveSpeed, double viscosity, double gridSpacing, double timeStep) {
    ShallowWater pond;
    pond.setPhysics(waveSpeed, viscosity, gridSpacing, timeStep);
    const Field older = makeRough(pond, width, height, GL_RED);
    runStep(pond);
    const Field newer(pond.getTexture(), width, height);
    runStep(pond);
    const double k = std::pow(timeStep * waveSpeed / gridSpacing, 2.0);
    const double q = 1.0 / (viscosity * timeStep + 2.0);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        return {(4.0 - 8.0 * k) * q * newer.at(x, y) + (viscosity * timeStep - 2.0) * q * older.at(x, y) +
                2.0 * k * q * newer.neighbours(x, y)};
    });
}

/// Of heights whose texture may have another size than the screen: they are filtered, a texel of theirs apart.
Comparison normals(int width, int height, int columns, int rows) {
    const Field heights = noiseTexture(GL_RG16F, columns, rows, -1.0F, 1.0F);
    NormalMapBuilder builder;
    makeReady(width, height, builder);
    builder.setHeightMax(2.0F);
    builder.build(heights.texture);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const double u = (column + 0.5) / width, v = (row + 0.5) / height, du = 1.0 / columns, dv = 1.0 / rows;
        const double slopeX = (heights.filtered(u + du, v) - heights.filtered(u - du, v))[0] * 2.0;
        const double slopeY = (heights.filtered(u, v + dv) - heights.filtered(u, v - dv))[0] * 2.0;
        return Values{-slopeX, -slopeY, 2.0} / std::sqrt(slopeX * slopeX + slopeY * slopeY + 4.0) * 0.5 + 0.5;
    });
}

/// As GLSL defines it, for a ray from a thinner into a denser medium.
Values refract(const Values& i, const Values& n, double eta) {
    const double cosine = (n * i).sum();
    return eta * i - (eta * cosine + std::sqrt(1.0 - eta * eta * (1.0 - cosine * cosine))) * n;
}

/// Noise as normals, most of which point upwards, and as heights, over a picture whose red and green are its own
/// coordinates, into a framebuffer of half floats. Highlights are added, a square of the cosine.
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
        const Values texel = normalMap.texel(x, y);
        const Values n = (Values{texel[0], texel[1], texel[2]} - 0.5) * 2.0;
        const Values ray = refract({0.0, 0.0, -1.0}, {n[1], n[0], n[2]}, 1.0 / 1.33);
        const double t = -heights.at(x, y) * 50.0 / ray[2];
        const double u = std::clamp((x + 0.5 + ray[0] * t) / width, 0.5 / width, 1.0 - 0.5 / width);
        const double v = std::clamp((y + 0.5 + ray[1] * t) / height, 0.5 / height, 1.0 - 0.5 / height);
        const Values light = {6.07, -4.21, 12.3};
        const Values half = light / std::sqrt((light * light).sum()) + Values{0.0, 0.0, 1.0};
        const double cosine = std::max(0.0, (n * half).sum() / std::sqrt((half * half).sum()));
        const double highlight = (n * light).sum() > 0.0 ? specular * cosine * cosine : 0.0;
        return Values{u, flip ? 1.0 - v : v, 0.25, 0.5} + highlight;
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
    {"pond_step_97x61", [] { return pondStep(97, 61, 2.0, 0.05, 0.4, 0.13); }, twoSteps},
    {"pond_step_of_thick_water_64x160", [] { return pondStep(64, 160, -1.5, 0.8, 0.7, 0.25); }, twoSteps},
    {"normals_64x160", [] { return normals(64, 160, 64, 160); }, oneStep},
    {"normals_of_fewer_heights_97x61", [] { return normals(97, 61, 31, 13); }, oneStep},
    {"refraction_97x61", [] { return refraction(97, 61, false); }, fourSteps},
    {"refraction_flipped_64x160", [] { return refraction(64, 160, true); }, fourSteps},
    {"refraction_with_highlights_97x61", [] { return refraction(97, 61, false, 0.1F); }, fourSteps},
});

} // namespace

} // namespace tidalume::pictures
