#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/pictures/PictureCase.h"
#include "tests/support/TestPeer.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tidalume::pictures {
namespace {

constexpr double pi = 3.141592653589793;
constexpr double open = std::numeric_limits<double>::quiet_NaN();

/// Texels of one to four channels, rows from the bottom, with coordinates clamped to the edge.
struct Field {
    int width, height, channels;
    std::vector<double> values;

    Values at(int x, int y) const {
        const int pixel = std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1);
        return {&values[static_cast<size_t>(pixel * channels)], static_cast<size_t>(channels)};
    }
    double first(int x, int y) const { return at(x, y)[0]; }
    double neighbours(int x, int y) const {
        return first(x - 1, y) + first(x + 1, y) + first(x, y - 1) + first(x, y + 1);
    }

    std::vector<float> floats() const { return {values.begin(), values.end()}; }
};

/// Random multiples of 1/1024 within [lowest, highest], which half floats hold exactly where they are not above 2.
Field randomField(int width, int height, int channels, double lowest, double highest, unsigned seed = 0) {
    std::mt19937 random(seed + static_cast<unsigned>(channels));
    std::uniform_int_distribution<int> steps(static_cast<int>(lowest * 1024.0), static_cast<int>(highest * 1024.0));
    Field field = {width, height, channels, {}};
    for (int i = 0; i < width * height * channels; ++i)
        field.values.push_back(steps(random) / 1024.0);
    return field;
}

/// A texture of half floats that deletes itself.
struct Texture {
    explicit Texture(const Field& field)
        : name(headless::makeTexture(formats[field.channels - 1], field.width, field.height, field.floats())) {}
    ~Texture() { glDeleteTextures(1, &name); }
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    static constexpr GLenum formats[] = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F};
    GLuint name;
};

/// Replaces what an effect's texture holds.
void overwrite(GLuint texture, const Field& field) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, field.width, field.height, field.channels == 1 ? GL_RED : GL_RG, GL_FLOAT,
                    field.floats().data());
}

double bump(double distance, double radius, double strength) {
    return (std::cos(std::min(1.0, distance / radius) * pi) * 0.5 + 0.5) * strength;
}

// Shapes, in pixels from the top-left corner: what they add at a point, whether a point lies in the rectangle that is
// painted, and the call that paints them.

/// A line with round ends.
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

    template <typename Water>
    void addTo(Water& water, float preserveWeight) {
        water.addDropLine(begin, end, radius, strength, preserveWeight);
    }
};

struct Drop : Line {
    void addTo(ShallowWaterIterative& water, float preserveWeight) {
        water.addDrop(begin, radius, strength, preserveWeight);
    }
};

/// A horizontal wave on a screen of a width.
struct Wave {
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

Line line(float x0, float y0, float x1, float y1, float radius, float strength) {
    return {{x0, y0}, {x1, y1}, radius, strength};
}

Drop drop(float x, float y, float radius, float strength) {
    return {line(x, y, x, y, radius, strength)};
}

Wave wave(int width, float center, float radius, float strength, float waveRadius, float waveCount) {
    return {width, center, radius, strength, waveRadius, waveCount};
}

/// Shapes one over the other: each replaces what its rectangle held.
template <typename... Shapes>
Comparison intensity(int width, int height, Shapes... shapes) {
    IntensityMapBuilder builder;
    builder.init();
    builder.setScreenSize(width, height);
    (shapes.addTo(builder, 0.3F), ...);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const double x = column + 0.5, y = height - row - 0.5;
        double value = 0.0;
        ((value = shapes.reaches(x, y) ? shapes.at(x, y) : value), ...);
        return {value};
    });
}

/// The simulation in a random state.
struct Pool {
    Pool(int width, int height) : state(randomField(width, height, 2, -0.25, 0.25)) {
        water.init();
        water.setScreenSize(width, height);
        overwrite(water.getTexture(), state);
    }

    Comparison beside(const std::function<Values(int x, int y)>& formula) {
        return compare(headless::readTexture(water.getTexture(), state.width, state.height), formula);
    }

    ShallowWaterIterative water;
    Field state;
};

template <typename Shape>
Comparison disturbed(int width, int height, Shape shape, float preserveWeight) {
    Pool pool(width, height);
    shape.addTo(pool.water, preserveWeight);
    return pool.beside([&](int x, int y) -> Values {
        const Values old = pool.state.at(x, y);
        return {old[0] * preserveWeight + shape.at(x + 0.5, height - y - 0.5), old[1]};
    });
}

Comparison iterativePass(int width, int height) {
    Pool pool(width, height);
    pool.water.setIterationCount(1);
    pool.water.update();
    return pool.beside([&](int x, int y) -> Values {
        const Values old = pool.state.at(x, y);
        const double v = (old[1] + (pool.state.neighbours(x, y) * 0.25 - old[0]) * 2.0) * 0.99;
        return {old[0] + v - std::copysign(0.00001, v), v};
    });
}

/// The three-buffer simulation in a random state. Its y runs upwards.
struct Pond {
    Pond(int width, int height) : newest(randomField(width, height, 1, -0.5, 0.5)) {
        water.init();
        water.setScreenSize(width, height);
        overwrite(water.getTexture(), newest);
    }

    /// Runs the next step that is due.
    void step() {
        const GLuint before = water.getTexture();
        while (water.getTexture() == before)
            water.update();
    }

    Comparison beside(const std::function<double(int x, int y)>& formula) {
        return compare(headless::readTexture(water.getTexture(), newest.width, newest.height),
                       [&](int x, int y) { return Values{formula(x, y)}; });
    }

    ShallowWater water;
    Field newest;
};

Comparison pondDrop(int width, int height, Drop drop) {
    Pond pond(width, height);
    pond.water.addDrop(drop.begin, drop.radius * 2.0F, drop.strength);
    return pond.beside([&](int x, int y) {
        return std::pow(pond.newest.first(x, y), 2.0) + std::pow(drop.at(x + 0.5, y + 0.5), 2.0);
    });
}

/// Ends and radius are in normalised device coordinates; the state before the newest is what the newest is made of.
Comparison pondLine(int width, int height, Line line) {
    Pond pond(width, height);
    pond.step();
    pond.water.addDropLine(line.begin, line.end, line.radius, line.strength);
    return pond.beside([&](int x, int y) {
        double sum = pond.newest.first(x, y);
        for (const float* end : {line.begin, line.end}) {
            const double dx = (x + 0.5) / width - (end[0] * 0.5 + 0.5);
            const double dy = (y + 0.5) / height - (end[1] * 0.5 + 0.5);
            const double a = std::max(0.0, 1.0 - std::hypot(dx, dy) / (line.radius * 0.5));
            sum += (0.5 - std::cos(a * pi) * 0.5) * line.strength * 0.4;
        }
        return std::min<double>(sum, line.strength);
    });
}

Comparison pondStep(int width, int height) {
    Pond pond(width, height);
    pond.step();
    const Field newest = randomField(width, height, 1, -0.25, 0.25, 9);
    overwrite(pond.water.getTexture(), newest);
    pond.step();
    const double k = std::pow(0.13 * 2.0 / 0.4, 2.0);
    const double q = 1.0 / (0.05 * 0.13 + 2.0);
    return pond.beside([&](int x, int y) {
        return (4.0 - 8.0 * k) * q * newest.first(x, y) + (0.05 * 0.13 - 2.0) * q * pond.newest.first(x, y) +
               2.0 * k * q * newest.neighbours(x, y);
    });
}

/// Of a height field of its own size, which may be another than the screen's: each pixel has its nearest texel's
/// normal.
Comparison normals(int width, int height, const Field& heights, float heightMax) {
    NormalMapBuilder builder;
    builder.init();
    builder.setScreenSize(width, height);
    builder.setHeightMax(heightMax);
    builder.build(Texture(heights).name);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const int x = (2 * column + 1) * heights.width / (2 * width);
        const int y = (2 * row + 1) * heights.height / (2 * height);
        const double slopeX = (heights.first(x + 1, y) - heights.first(x - 1, y)) * heightMax;
        const double slopeY = (heights.first(x, y + 1) - heights.first(x, y - 1)) * heightMax;
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
    Field ground = {width, height, 4, {}};
    for (int i = 0; i < width * height; ++i)
        ground.values.insert(ground.values.end(), {(i % width + 0.5) / width, (i / width + 0.5) / height, 0.25, 0.5});
    const Texture background(ground);
    const Texture target(ground);
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target.name, 0);

    ShallowWaterRenderer renderer;
    renderer.init();
    renderer.setScreenSize(width, height);
    renderer.setTexture(background.name);
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setBGFlip(flip);
    renderer.setHeightMax(50.0F);
    TestPeer::mMaterialSpecular(renderer) = specular;
    renderer.render(Texture(heights).name, Texture(normalMap).name);
    glDeleteFramebuffers(1, &framebuffer);

    return compare(headless::readTexture(target.name, width, height), [&](int column, int row) -> Values {
        const Values n = (normalMap.at(column, row) - 0.5) * 2.0;
        const Values ray = refract({0.0, 0.0, -1.0}, {n[1], n[0], n[2]}, 1.0 / 1.33);
        const double t = -heights.first(column, row) * 50.0 / ray[2];
        double u = std::clamp((column + 0.5 + ray[0] * t) / width, 0.5 / width, 1.0 - 0.5 / width);
        double v = std::clamp((row + 0.5 + ray[1] * t) / height, 0.5 / height, 1.0 - 0.5 / height);
        // Near to a ray that runs along the ground the formula is too steep for floats.
        if (std::fabs(ray[2]) < 0.05) u = v = open;
        return Values{u, flip ? 1.0 - v : v, 0.25, 0.5} + highlight(n, specular);
    });
}

/// A map of unit normals that lean in every direction.
Field unitNormals(int width, int height) {
    Field field = randomField(width, height, 3, -0.5, 0.5);
    for (size_t i = 0; i < field.values.size(); i += 3) {
        field.values[i + 2] = 0.6;
        const double length = std::hypot(field.values[i], field.values[i + 1], 0.6);
        for (size_t c = i; c < i + 3; ++c)
            field.values[c] = std::round((field.values[c] / length * 0.5 + 0.5) * 1024.0) / 1024.0;
    }
    return field;
}

/// The whole chain without a disturbance, over an 8-bit picture of noise: the picture itself.
Comparison stillWater(int width, int height, bool flip) {
    ShallowWaterIterative water;
    NormalMapBuilder normalMap;
    ShallowWaterRenderer renderer;
    water.init();
    water.setScreenSize(width, height);
    water.update();
    normalMap.init();
    normalMap.setScreenSize(width, height);
    normalMap.build(water.getTexture());
    renderer.init();
    renderer.setScreenSize(width, height);
    renderer.setBGFlip(flip);

    Field picture = randomField(width, height, 4, 0.0, 255.0 / 1024.0);
    for (double& value : picture.values)
        value *= 1024.0 / 255.0;
    const GLuint texture = headless::makeTexture(GL_RGBA8, width, height, picture.floats());
    renderer.setTexture(texture);
    renderer.render(water.getTexture(), normalMap.getTexture());
    glDeleteTextures(1, &texture);
    return compare(headless::readFramebuffer(width, height),
                   [&](int x, int y) { return picture.at(x, flip ? height - 1 - y : y); });
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
             return intensity(97, 61, wave(97, 30, 9.7, 0.8, 7.3, 2), line(20.2, 12.3, 77.7, 40.9, 11.1, 0.9),
                              line(50, 30, 50, 30, 13.2, 0.6));
         },
         oneStep, steepest(9.7, 0.8)},
        {"intensity_beyond_every_border_64x160",
         [] {
             return intensity(64, 160, wave(64, 155, 10.2, 0.5, 11, 0.75), line(-5.2, 40.2, 70.4, 60.3, 9.3, 0.7),
                              line(30, -30.3, 31, 5.2, 8.4, 0.9), line(0, 0, 0, 0, 20.3, 0.8),
                              line(64, 160, 64, 160, 20.3, 0.4), line(-40, 80, -40, 80, 15, 0.9));
         },
         oneStep, steepest(8.4, 0.9)},
        {"iterative_drop_64x160", [] { return disturbed(64, 160, drop(0.5, 159, 30, -0.9), 0); }, oneStep},
        {"iterative_drop_97x61", [] { return disturbed(97, 61, drop(91, 7, 25, 0.4), 0.75); }, oneStep},
        {"iterative_line_97x61", [] { return disturbed(97, 61, line(10.2, 50.1, 80.7, 12.4, 14.2, 0.45), 1); },
         oneStep},
        {"iterative_line_64x160", [] { return disturbed(64, 160, line(-20, 80, 90, 80, 22, 0.45), 0.5); }, oneStep},
        {"iterative_line_point", [] { return disturbed(97, 61, line(30, 30, 30, 30, 9, 0.4), 1); }, oneStep},
        {"iterative_wave_97x61", [] { return disturbed(97, 61, wave(97, 30, 9, 0.45, 12, 3), 1); }, oneStep},
        {"iterative_wave_64x160", [] { return disturbed(64, 160, wave(64, 2, 30, 0.7, 25, 0.5), 0.25); }, oneStep},
        {"iterative_pass_97x61", [] { return iterativePass(97, 61); }, twoSteps},
        {"iterative_pass_64x160", [] { return iterativePass(64, 160); }, twoSteps},
        {"iterative_pass_one_row", [] { return iterativePass(13, 1); }, twoSteps},
        {"pond_drop_97x61", [] { return pondDrop(97, 61, drop(30.3, 10.2, 22.2, 0.7)); }, oneStep},
        {"pond_drop_corner_64x160", [] { return pondDrop(64, 160, drop(66, 158, 40, -0.8)); }, oneStep},
        {"pond_line_97x61", [] { return pondLine(97, 61, line(-0.4, 0.3, 0.5, -0.2, 0.6, 0.9)); }, oneStep},
        {"pond_line_capped_64x160", [] { return pondLine(64, 160, line(1, 1, -1.2, -0.9, 1.1, 0.45)); }, oneStep},
        {"pond_step_97x61", [] { return pondStep(97, 61); }, twoSteps},
        {"pond_step_64x160", [] { return pondStep(64, 160); }, twoSteps},
        {"normals_97x61", [] { return normals(97, 61, randomField(97, 61, 1, -1, 1), 2); }, oneStep},
        {"normals_of_state_64x160", [] { return normals(64, 160, randomField(64, 160, 2, -0.02, 0.02), 100); },
         oneStep},
        {"normals_of_fewer_heights", [] { return normals(97, 61, randomField(31, 13, 1, -1, 1), 1); }, oneStep},
        {"normals_of_more_heights", [] { return normals(64, 160, randomField(201, 333, 1, -1, 1), 1); }, oneStep},
        {"refraction_flipped_64x160",
         [] { return refraction(unitNormals(64, 160), randomField(64, 160, 2, -0.2, 0.4), true, 0); }, fourSteps},
        {"refraction_any_normal_97x61",
         [] { return refraction(randomField(97, 61, 3, 0, 1), randomField(97, 61, 1, 0, 0.2), false, 0); }, fourSteps},
        {"refraction_before_build",
         [] { return refraction(randomField(64, 160, 3, 0, 0), randomField(64, 160, 1, 0, 0.2), false, 0); },
         fourSteps},
        {"refraction_highlights_97x61",
         [] { return refraction(unitNormals(97, 61), randomField(97, 61, 1, -0.2, 0.2), false, 0.7); }, fourSteps},
        {"still_water_97x61", [] { return stillWater(97, 61, false); }, byteStep},
        {"still_water_flipped_64x160", [] { return stillWater(64, 160, true); }, byteStep},
    };
}

} // namespace tidalume::pictures
