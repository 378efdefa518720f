#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/pictures/Field.h"
#include "tests/support/TestPeer.h"

namespace tidalume::pictures {
namespace {

constexpr double pi = 3.141592653589793;
constexpr GLenum halfFloats[] = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F}; // by number of channels, from one

/// Random values that half floats hold exactly where they are not above 2.
Field randomHalves(int width, int height, int channels, double lowest, double highest, unsigned seed = 0) {
    return randomField(width, height, channels, lowest, highest, 1024.0, seed);
}

double neighbours(const Field& field, int x, int y) {
    return field.at(x - 1, y)[0] + field.at(x + 1, y)[0] + field.at(x, y - 1)[0] + field.at(x, y + 1)[0];
}

template <typename... Effects>
void makeReady(int width, int height, Effects&... effects) {
    (..., (effects.init(), effects.setScreenSize(width, height)));
}

/// Replaces what an effect's texture holds.
void overwrite(GLuint texture, const Field& field) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, field.width, field.height, field.channels == 1 ? GL_RED : GL_RG, GL_FLOAT,
                    floats(field.values).data());
}

double bump(double distance, double radius, double strength) {
    return (std::cos(std::min(1.0, distance / radius) * pi) * 0.5 + 0.5) * strength;
}

// Shapes, in pixels from the top-left corner: what they add at a point, whether a point lies in the rectangle that is
// painted, and the call that paints them.

/// A line with round ends.
struct Line {
    Line(float x0, float y0, float x1, float y1, float radius, float strength)
        : begin{x0, y0}, end{x1, y1}, radius(radius), strength(strength) {}

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

    template <typename Water>
    void addTo(Water& water, float preserveWeight) {
        water.addDropLine(begin, end, radius, strength, preserveWeight);
    }
};

struct Drop : Line {
    Drop(float x, float y, float radius, float strength) : Line(x, y, x, y, radius, strength) {}

    void addTo(ShallowWaterIterative& water, float preserveWeight) {
        water.addDrop(begin, radius, strength, preserveWeight);
    }
};

/// A horizontal wave on a screen of a width.
struct Wave {
    Wave(int width, float center, float radius, float strength, float waveRadius, float waveCount)
        : width(width), center(center), radius(radius), strength(strength), waveRadius(waveRadius),
          waveCount(waveCount) {}

    int width;
    float center, radius, strength, waveRadius, waveCount;

    double at(double x, double y) const {
        const double curve = center + std::sin(x / width * pi * 2.0 * waveCount) * waveRadius;
        return bump(std::fabs(curve - y), radius, strength);
    }

    bool reaches(double /*x*/, double y) const { return std::fabs(y - center) < waveRadius + radius; }

    template <typename Water>
    void addTo(Water& water, float preserveWeight) {
        water.addHorizontalWave(center, radius, strength, waveRadius, waveCount, preserveWeight);
    }
};

/// Shapes one over the other: each replaces what its rectangle held.
template <typename... Shapes>
Comparison intensity(int width, int height, Shapes... shapes) {
    IntensityMapBuilder builder;
    makeReady(width, height, builder);
    (shapes.addTo(builder, 0.3F), ...);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const double x = column + 0.5, y = height - row - 0.5;
        double value = 0.0;
        ((value = shapes.reaches(x, y) ? shapes.at(x, y) : value), ...);
        return {value};
    });
}

/// A simulation in a random state.
template <typename Water>
struct Simulation {
    Simulation(int width, int height, int channels) : state(randomHalves(width, height, channels, -0.25, 0.25)) {
        makeReady(width, height, water);
        overwrite(water.getTexture(), state);
    }

    Comparison beside(const std::function<Values(int x, int y)>& formula) {
        return compare(headless::readTexture(water.getTexture(), state.width, state.height), formula);
    }

    Water water;
    const Field state;
};

template <typename Shape>
Comparison disturbed(int width, int height, Shape shape, float preserveWeight) {
    Simulation<ShallowWaterIterative> pool(width, height, 2);
    shape.addTo(pool.water, preserveWeight);
    return pool.beside([&](int x, int y) -> Values {
        const Values old = pool.state.at(x, y);
        return {old[0] * preserveWeight + shape.at(x + 0.5, height - y - 0.5), old[1]};
    });
}

Comparison iterativePass(int width, int height) {
    Simulation<ShallowWaterIterative> pool(width, height, 2);
    pool.water.setIterationCount(1);
    pool.water.update();
    return pool.beside([&](int x, int y) -> Values {
        const Values old = pool.state.at(x, y);
        const double v = (old[1] + (neighbours(pool.state, x, y) * 0.25 - old[0]) * 2.0) * 0.99;
        return {old[0] + v - std::copysign(0.00001, v), v};
    });
}

/// The three-buffer simulation, whose y runs upwards.
struct Pond : Simulation<ShallowWater> {
    Pond(int width, int height) : Simulation(width, height, 1) {}

    /// Runs the next step that is due.
    void step() {
        const GLuint before = water.getTexture();
        while (water.getTexture() == before)
            water.update();
    }
};

Comparison pondDrop(int width, int height, Drop drop) {
    Pond pond(width, height);
    pond.water.addDrop(drop.begin, drop.radius * 2.0F, drop.strength);
    return pond.beside([&](int x, int y) -> Values {
        return {std::pow(pond.state.at(x, y)[0], 2.0) + std::pow(drop.at(x + 0.5, y + 0.5), 2.0)};
    });
}

/// Ends and radius are in normalised device coordinates; the state before the newest is what the newest is made of.
Comparison pondLine(int width, int height, Line line) {
    Pond pond(width, height);
    pond.step();
    pond.water.addDropLine(line.begin, line.end, line.radius, line.strength);
    return pond.beside([&](int x, int y) -> Values {
        double sum = pond.state.at(x, y)[0];
        for (const float* end : {line.begin, line.end}) {
            const double dx = (x + 0.5) / width - (end[0] * 0.5 + 0.5);
            const double dy = (y + 0.5) / height - (end[1] * 0.5 + 0.5);
            const double a = std::max(0.0, 1.0 - std::hypot(dx, dy) / (line.radius * 0.5));
            sum += (0.5 - std::cos(a * pi) * 0.5) * line.strength * 0.4;
        }
        return {std::min<double>(sum, line.strength)};
    });
}

Comparison pondStep(int width, int height) {
    Pond pond(width, height);
    pond.step();
    const Field newest = randomHalves(width, height, 1, -0.25, 0.25, 9);
    overwrite(pond.water.getTexture(), newest);
    pond.step();
    const double k = std::pow(0.13 * 2.0 / 0.4, 2.0);
    const double q = 1.0 / (0.05 * 0.13 + 2.0);
    return pond.beside([&](int x, int y) -> Values {
        return {(4.0 - 8.0 * k) * q * newest.at(x, y)[0] + (0.05 * 0.13 - 2.0) * q * pond.state.at(x, y)[0] +
                2.0 * k * q * neighbours(newest, x, y)};
    });
}

/// Of a height field of its own size, which may be another than the screen's: each pixel has its nearest texel's
/// normal.
Comparison normals(int width, int height, const Field& heights, float heightMax) {
    NormalMapBuilder builder;
    makeReady(width, height, builder);
    builder.setHeightMax(heightMax);
    builder.build(Texture(halfFloats[heights.channels - 1], heights).name);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const int x = (2 * column + 1) * heights.width / (2 * width);
        const int y = (2 * row + 1) * heights.height / (2 * height);
        const double slopeX = (heights.at(x + 1, y)[0] - heights.at(x - 1, y)[0]) * heightMax;
        const double slopeY = (heights.at(x, y + 1)[0] - heights.at(x, y - 1)[0]) * heightMax;
        return Values{-slopeX, -slopeY, 2.0} / std::sqrt(slopeX * slopeX + slopeY * slopeY + 4.0) * 0.5 + 0.5;
    });
}

double dot(const Values& a, const Values& b) {
    return (a * b).sum();
}

/// As GLSL defines it.
Values refract(const Values& i, const Values& n, double eta) {
    const double cosine = dot(n, i);
    const double k = 1.0 - eta * eta * (1.0 - cosine * cosine);
    if (k < 0.0) return {0.0, 0.0, 0.0};
    return eta * i - (eta * cosine + std::sqrt(k)) * n;
}

double highlight(const Values& n, double strength) {
    const Values light = Values{-3.0, 8.0, 7.0} / std::sqrt(9.0 + 64.0 + 49.0);
    if (!(dot(n, light) > 0.0)) return 0.0;
    const Values half = light + Values{0.0, 0.0, 1.0};
    return strength * std::pow(std::max(0.0, dot(n, half) / std::sqrt(dot(half, half))), 50.0);
}

/// Normals and heights over a picture whose red and green are its own coordinates, into a framebuffer of half floats.
/// @param normalMap  as stored, n * 0.5 + 0.5, of any length
Comparison refraction(const Field& normalMap, const Field& heights, bool flip, float specular) {
    const int width = normalMap.width;
    const int height = normalMap.height;
    Field ground = {width, height, 4};
    for (int i = 0; i < width * height; ++i)
        ground.values.insert(ground.values.end(), {(i % width + 0.5) / width, (i / width + 0.5) / height, 0.25, 0.5});
    const Texture background(GL_RGBA16F, ground);
    const Texture target(GL_RGBA16F, ground);
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target.name, 0);

    ShallowWaterRenderer renderer;
    makeReady(width, height, renderer);
    renderer.setTexture(background.name);
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setBGFlip(flip);
    renderer.setHeightMax(50.0F);
    TestPeer::mMaterialSpecular(renderer) = specular;
    renderer.render(Texture(halfFloats[heights.channels - 1], heights).name, Texture(GL_RGB16F, normalMap).name);
    glDeleteFramebuffers(1, &framebuffer);

    return compare(headless::readTexture(target.name, width, height), [&](int column, int row) -> Values {
        const Values n = (normalMap.at(column, row) - 0.5) * 2.0;
        const Values ray = refract({0.0, 0.0, -1.0}, {n[1], n[0], n[2]}, 1.0 / 1.33);
        const double t = -heights.at(column, row)[0] * 50.0 / ray[2];
        double u = std::clamp((column + 0.5 + ray[0] * t) / width, 0.5 / width, 1.0 - 0.5 / width);
        double v = std::clamp((row + 0.5 + ray[1] * t) / height, 0.5 / height, 1.0 - 0.5 / height);
        // Near to a ray that runs along the ground the formula is too steep for floats.
        if (std::fabs(ray[2]) < 0.05) u = v = open;
        return Values{u, flip ? 1.0 - v : v, 0.25, 0.5} + highlight(n, specular);
    });
}

/// A map of unit normals that lean in every direction.
Field unitNormals(int width, int height) {
    const Field lean = randomHalves(width, height, 2, -0.5, 0.5);
    Field normals = {width, height, 3};
    for (int i = 0; i < width * height; ++i) {
        const Values n = {lean.at(i % width, i / width)[0], lean.at(i % width, i / width)[1], 0.6};
        for (const double c : Values(n / std::sqrt(dot(n, n))))
            normals.values.push_back(std::round((c * 0.5 + 0.5) * 1024.0) / 1024.0);
    }
    return normals;
}

/// The whole chain without a disturbance, over an 8-bit picture of noise: the picture itself.
Comparison stillWater(int width, int height, bool flip) {
    ShallowWaterIterative water;
    NormalMapBuilder normalMap;
    ShallowWaterRenderer renderer;
    makeReady(width, height, water, normalMap, renderer);
    water.update();
    normalMap.build(water.getTexture());
    renderer.setBGFlip(flip);

    const Texture picture(GL_RGBA8, randomField(width, height, 4, 0.0, 1.0, 255.0));
    renderer.setTexture(picture.name);
    renderer.render(water.getTexture(), normalMap.getTexture());
    return compare(headless::readFramebuffer(width, height),
                   [&](int x, int y) { return picture.texels.at(x, flip ? height - 1 - y : y); });
}

/// A step of a half float from 0.5 to 1, as drivers may truncate, and a hundredth of it for the floats on the way.
constexpr double step = 1.01 * 0.5 / 1024.0;
constexpr Tolerance oneStep = {step, "one step of a half float below 1, as drivers may truncate"};
constexpr Tolerance twoSteps = {2 * step, "one step of a half float below 2, as drivers may truncate"};
constexpr Tolerance fourSteps = {4 * step, "one step of a half float below 2, and linear filtering between its texels"};
constexpr Tolerance byteStep = {1.01 / 255.0, "one step of 8 bits"};

/// The slope of a bump, per pixel, where it is steepest.
constexpr double steepest(double radius, double strength) {
    return pi / 2.0 / radius * strength;
}

} // namespace

PictureTable waterPictures() {
    return {
        {"intensity_shapes_97x61",
         [] {
             return intensity(97, 61, Wave(97, 30, 9.7, 0.8, 7.3, 2), Line(20.2, 12.3, 77.7, 40.9, 11.1, 0.9),
                              Line(50, 30, 50, 30, 13.2, 0.6));
         },
         oneStep, steepest(9.7, 0.8)},
        {"intensity_beyond_every_border_64x160",
         [] {
             return intensity(64, 160, Wave(64, 155, 10.2, 0.5, 11, 0.75), Line(-5.2, 40.2, 70.4, 60.3, 9.3, 0.7),
                              Line(30, -30.3, 31, 5.2, 8.4, 0.9), Line(0, 0, 0, 0, 20.3, 0.8),
                              Line(64, 160, 64, 160, 20.3, 0.4), Line(-40, 80, -40, 80, 15, 0.9));
         },
         oneStep, steepest(8.4, 0.9)},
        {"iterative_drop_64x160", [] { return disturbed(64, 160, Drop(0.5, 159, 30, -0.9), 0); }, oneStep},
        {"iterative_drop_97x61", [] { return disturbed(97, 61, Drop(91, 7, 25, 0.4), 0.75); }, oneStep},
        {"iterative_line_97x61", [] { return disturbed(97, 61, Line(10.2, 50.1, 80.7, 12.4, 14.2, 0.45), 1); },
         oneStep},
        {"iterative_line_64x160", [] { return disturbed(64, 160, Line(-20, 80, 90, 80, 22, 0.45), 0.5); }, oneStep},
        {"iterative_line_point", [] { return disturbed(97, 61, Line(30, 30, 30, 30, 9, 0.4), 1); }, oneStep},
        {"iterative_wave_97x61", [] { return disturbed(97, 61, Wave(97, 30, 9, 0.45, 12, 3), 1); }, oneStep},
        {"iterative_wave_64x160", [] { return disturbed(64, 160, Wave(64, 2, 30, 0.7, 25, 0.5), 0.25); }, oneStep},
        {"iterative_pass_97x61", [] { return iterativePass(97, 61); }, twoSteps},
        {"iterative_pass_64x160", [] { return iterativePass(64, 160); }, twoSteps},
        {"iterative_pass_one_row", [] { return iterativePass(13, 1); }, twoSteps},
        {"pond_drop_97x61", [] { return pondDrop(97, 61, Drop(30.3, 10.2, 22.2, 0.7)); }, oneStep},
        {"pond_drop_corner_64x160", [] { return pondDrop(64, 160, Drop(66, 158, 40, -0.8)); }, oneStep},
        {"pond_line_97x61", [] { return pondLine(97, 61, Line(-0.4, 0.3, 0.5, -0.2, 0.6, 0.9)); }, oneStep},
        {"pond_line_capped_64x160", [] { return pondLine(64, 160, Line(1, 1, -1.2, -0.9, 1.1, 0.2)); }, oneStep},
        {"pond_step_97x61", [] { return pondStep(97, 61); }, twoSteps},
        {"pond_step_64x160", [] { return pondStep(64, 160); }, twoSteps},
        {"normals_97x61", [] { return normals(97, 61, randomHalves(97, 61, 1, -1, 1), 2); }, oneStep},
        {"normals_of_state_64x160", [] { return normals(64, 160, randomHalves(64, 160, 2, -0.02, 0.02), 100); },
         oneStep},
        {"normals_of_fewer_heights", [] { return normals(97, 61, randomHalves(31, 13, 1, -1, 1), 1); }, oneStep},
        {"normals_of_more_heights", [] { return normals(64, 160, randomHalves(201, 333, 1, -1, 1), 1); }, oneStep},
        {"refraction_flipped_64x160",
         [] { return refraction(unitNormals(64, 160), randomHalves(64, 160, 2, -0.2, 0.4), true, 0); }, fourSteps},
        {"refraction_any_normal_97x61",
         [] { return refraction(randomHalves(97, 61, 3, 0, 1), randomHalves(97, 61, 1, 0, 0.2), false, 0); },
         fourSteps},
        {"refraction_before_build",
         [] { return refraction(randomHalves(64, 160, 3, 0, 0), randomHalves(64, 160, 1, 0, 0.2), false, 0); },
         fourSteps},
        {"refraction_highlights_97x61",
         [] { return refraction(unitNormals(97, 61), randomHalves(97, 61, 1, -0.2, 0.2), false, 0.7); }, fourSteps},
        {"still_water_97x61", [] { return stillWater(97, 61, false); }, byteStep},
        {"still_water_flipped_64x160", [] { return stillWater(64, 160, true); }, byteStep},
    };
}

} // namespace tidalume::pictures
