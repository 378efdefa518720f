#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "headless/Pixels.h"
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
    int width;
    int height;
    int channels;
    std::vector<double> values;

    double& at(int x, int y, int channel = 0) {
        const int column = std::clamp(x, 0, width - 1);
        const int row = std::clamp(y, 0, height - 1);
        return values[static_cast<size_t>((row * width + column) * channels + channel)];
    }

    double neighbours(int x, int y) { return at(x - 1, y) + at(x + 1, y) + at(x, y - 1) + at(x, y + 1); }
};

/// Random multiples of 1/1024 within [lowest, highest], which half floats hold exactly where they are not above 2.
Field randomField(int width, int height, int channels, double lowest, double highest) {
    std::mt19937 random(static_cast<unsigned>(width * 7 + channels));
    std::uniform_int_distribution<int> steps(static_cast<int>(lowest * 1024.0), static_cast<int>(highest * 1024.0));
    Field field = {width, height, channels, {}};
    for (int i = 0; i < width * height * channels; ++i)
        field.values.push_back(steps(random) / 1024.0);
    return field;
}

GLuint toTexture(const Field& field) {
    constexpr GLenum formats[] = {GL_R16F, GL_RG16F, GL_RGB16F, GL_RGBA16F};
    return headless::makeTexture(formats[field.channels - 1], field.width, field.height,
                                 std::vector<float>(field.values.begin(), field.values.end()));
}

/// Replaces what an effect's texture holds.
void overwrite(GLuint texture, const Field& field) {
    const std::vector<float> values(field.values.begin(), field.values.end());
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, field.width, field.height, field.channels == 1 ? GL_RED : GL_RG, GL_FLOAT,
                    values.data());
}

/// An effect's texture beside what its formula gives.
Comparison compare(GLuint texture, const Field& expected) {
    const headless::PixelArray pixels = headless::readTexture(texture, expected.width, expected.height);
    Comparison comparison = {expected.width, expected.height, expected.channels, {}, expected.values};
    for (int i = 0; i < expected.width * expected.height; ++i) {
        const float* pixel = pixels.rgba.data() + static_cast<size_t>(i) * 4;
        comparison.drawn.insert(comparison.drawn.end(), pixel, pixel + expected.channels);
    }
    return comparison;
}

double bump(double distance, double radius, double strength) {
    return (std::cos(std::min(1.0, distance / radius) * pi) * 0.5 + 0.5) * strength;
}

/// A segment or, where both ends are the same, a point. In pixels.
struct Line {
    float ends[4];
    float radius;
    float strength;

    double at(double x, double y) const {
        const double vx = static_cast<double>(ends[0]);
        const double vy = static_cast<double>(ends[1]);
        const double dx = static_cast<double>(ends[2]) - vx;
        const double dy = static_cast<double>(ends[3]) - vy;
        const double length = std::hypot(dx, dy);
        const double t = length > 0.0 ? std::clamp(((x - vx) * dx + (y - vy) * dy) / (length * length), 0.0, 1.0) : 0.0;
        return bump(std::hypot(x - vx - t * dx, y - vy - t * dy), static_cast<double>(radius),
                    static_cast<double>(strength));
    }

    /// Whether a point lies in the rectangle that is painted.
    bool reaches(double x, double y) const {
        const double r = static_cast<double>(radius);
        return x > static_cast<double>(std::min(ends[0], ends[2])) - r &&
               x < static_cast<double>(std::max(ends[0], ends[2])) + r &&
               y > static_cast<double>(std::min(ends[1], ends[3])) - r &&
               y < static_cast<double>(std::max(ends[1], ends[3])) + r;
    }
};

struct Wave {
    float center;
    float radius;
    float strength;
    float waveRadius;
    float waveCount;

    double at(double x, double y, int width) const {
        const double phase = x / width * pi * 2.0 * static_cast<double>(waveCount);
        const double curve = static_cast<double>(center) + std::sin(phase) * static_cast<double>(waveRadius);
        return bump(std::fabs(curve - y), static_cast<double>(radius), static_cast<double>(strength));
    }

    bool reaches(double y) const {
        return std::fabs(y - static_cast<double>(center)) < static_cast<double>(waveRadius + radius);
    }
};

/// Sets every texel's first channel from the middle of its pixel, counted from the top-left corner.
template <typename Formula>
void forEachPixel(Field& field, Formula formula) {
    for (int row = 0; row < field.height; ++row) {
        for (int column = 0; column < field.width; ++column)
            field.at(column, row) = formula(field.at(column, row), column + 0.5, field.height - row - 0.5);
    }
}

/// A wave, then lines over it: each replaces what its rectangle held.
Comparison paintedShapes(int width, int height, Wave wave, std::vector<Line> lines) {
    IntensityMapBuilder builder;
    builder.init();
    builder.setScreenSize(width, height);
    builder.addHorizontalWave(wave.center, wave.radius, wave.strength, wave.waveRadius, wave.waveCount, 0.3F);
    Field expected = {width, height, 1, std::vector<double>(static_cast<size_t>(width * height))};
    forEachPixel(expected,
                 [&](double old, double x, double y) { return wave.reaches(y) ? wave.at(x, y, width) : old; });
    for (Line& line : lines) {
        builder.addDropLine(line.ends, line.ends + 2, line.radius, line.strength, 0.3F);
        forEachPixel(expected,
                     [&](double old, double x, double y) { return line.reaches(x, y) ? line.at(x, y) : old; });
    }
    return compare(builder.getTexture(), expected);
}

/// The simulation with a random state, disturbed once.
template <typename Disturb, typename Formula>
Comparison disturbed(int width, int height, Disturb disturb, Formula formula) {
    ShallowWaterIterative water;
    water.init();
    water.setScreenSize(width, height);
    Field state = randomField(width, height, 2, -0.5, 0.5);
    overwrite(water.getTexture(), state);
    disturb(water);
    forEachPixel(state, formula);
    return compare(water.getTexture(), state);
}

Comparison iterativeDrop(int width, int height, Line drop, float preserveWeight) {
    return disturbed(
        width, height,
        [&](ShallowWaterIterative& water) { water.addDrop(drop.ends, drop.radius, drop.strength, preserveWeight); },
        [&](double old, double x, double y) { return old * static_cast<double>(preserveWeight) + drop.at(x, y); });
}

Comparison iterativeLine(int width, int height, Line line, float preserveWeight) {
    return disturbed(
        width, height,
        [&](ShallowWaterIterative& water) {
            water.addDropLine(line.ends, line.ends + 2, line.radius, line.strength, preserveWeight);
        },
        [&](double old, double x, double y) { return old * static_cast<double>(preserveWeight) + line.at(x, y); });
}

Comparison iterativeWave(int width, int height, Wave wave, float preserveWeight) {
    return disturbed(
        width, height,
        [&](ShallowWaterIterative& water) {
            water.addHorizontalWave(wave.center, wave.radius, wave.strength, wave.waveRadius, wave.waveCount,
                                    preserveWeight);
        },
        [&](double old, double x, double y) {
            return old * static_cast<double>(preserveWeight) + wave.at(x, y, width);
        });
}

Comparison iterativePass(int width, int height) {
    ShallowWaterIterative water;
    water.init();
    water.setScreenSize(width, height);
    water.setIterationCount(1);
    Field state = randomField(width, height, 2, -0.25, 0.25);
    overwrite(water.getTexture(), state);
    water.update();

    Field expected = state;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double h = state.at(x, y);
            const double v = (state.at(x, y, 1) + (state.neighbours(x, y) * 0.25 - h) * 2.0) * 0.99;
            expected.at(x, y, 0) = h + v - std::copysign(0.00001, v);
            expected.at(x, y, 1) = v;
        }
    }
    return compare(water.getTexture(), expected);
}

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

    ShallowWater water;
    Field newest;
};

/// y runs upwards here.
Comparison pondDrop(int width, int height, Line drop) {
    Pond pond(width, height);
    pond.water.addDrop(drop.ends, drop.radius * 2.0F, drop.strength);
    forEachPixel(pond.newest,
                 [&](double old, double x, double y) { return old * old + std::pow(drop.at(x, height - y), 2.0); });
    return compare(pond.water.getTexture(), pond.newest);
}

/// Ends and radius are in normalised device coordinates; the state before the newest is what the newest is made of.
Comparison pondLine(int width, int height, Line line) {
    Pond pond(width, height);
    pond.step();
    pond.water.addDropLine(line.ends, line.ends + 2, line.radius, line.strength);
    forEachPixel(pond.newest, [&](double old, double x, double y) {
        for (int end = 0; end < 2; ++end) {
            const double dx = x / width - (static_cast<double>(line.ends[2 * end]) * 0.5 + 0.5);
            const double dy = (1.0 - y / height) - (static_cast<double>(line.ends[2 * end + 1]) * 0.5 + 0.5);
            const double a = std::max(0.0, 1.0 - std::hypot(dx, dy) / (static_cast<double>(line.radius) * 0.5));
            old += (0.5 - std::cos(a * pi) * 0.5) * static_cast<double>(line.strength) * 0.4;
        }
        return std::min(old, static_cast<double>(line.strength));
    });
    return compare(pond.water.getTexture(), pond.newest);
}

Comparison pondStep(int width, int height) {
    Pond pond(width, height);
    Field before = pond.newest;
    pond.step();
    Field newest = randomField(width, height, 1, -0.25, 0.25);
    std::reverse(newest.values.begin(), newest.values.end());
    overwrite(pond.water.getTexture(), newest);
    pond.step();

    const double k = std::pow(0.13 * 2.0 / 0.4, 2.0);
    const double q = 1.0 / (0.05 * 0.13 + 2.0);
    Field expected = newest;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            expected.at(x, y) = (4.0 - 8.0 * k) * q * newest.at(x, y) + (0.05 * 0.13 - 2.0) * q * before.at(x, y) +
                                2.0 * k * q * newest.neighbours(x, y);
        }
    }
    return compare(pond.water.getTexture(), expected);
}

/// Of a height field of its own size, which may be another than the screen's: each pixel has its nearest texel's
/// normal.
Comparison normals(int width, int height, Field heights, float heightMax) {
    NormalMapBuilder builder;
    builder.init();
    builder.setScreenSize(width, height);
    builder.setHeightMax(heightMax);
    const GLuint texture = toTexture(heights);
    builder.build(texture);
    glDeleteTextures(1, &texture);

    Field expected = {width, height, 3, std::vector<double>(static_cast<size_t>(width * height) * 3)};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const int x = (2 * column + 1) * heights.width / (2 * width);
            const int y = (2 * row + 1) * heights.height / (2 * height);
            const double slopeX = (heights.at(x + 1, y) - heights.at(x - 1, y)) * static_cast<double>(heightMax);
            const double slopeY = (heights.at(x, y + 1) - heights.at(x, y - 1)) * static_cast<double>(heightMax);
            const double length = std::sqrt(slopeX * slopeX + slopeY * slopeY + 4.0);
            expected.at(column, row, 0) = -slopeX / length * 0.5 + 0.5;
            expected.at(column, row, 1) = -slopeY / length * 0.5 + 0.5;
            expected.at(column, row, 2) = 2.0 / length * 0.5 + 0.5;
        }
    }
    return compare(builder.getTexture(), expected);
}

struct Vector {
    double x, y, z;
};

double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// As GLSL defines it.
Vector refract(const Vector& i, const Vector& n, double eta) {
    const double cosine = dot(n, i);
    const double k = 1.0 - eta * eta * (1.0 - cosine * cosine);
    if (k < 0.0) return {0.0, 0.0, 0.0};
    const double along = eta * cosine + std::sqrt(k);
    return {eta * i.x - along * n.x, eta * i.y - along * n.y, eta * i.z - along * n.z};
}

double specularAt(const Vector& n, double strength) {
    const double length = std::sqrt(9.0 + 64.0 + 49.0);
    const Vector light = {-3.0 / length, 8.0 / length, 7.0 / length};
    if (!(dot(n, light) > 0.0)) return 0.0;
    const Vector half = {light.x, light.y, light.z + 1.0};
    return strength * std::pow(std::max(0.0, dot(n, half) / std::sqrt(dot(half, half))), 50.0);
}

/// Normals and heights over a picture whose red and green are its own coordinates, into a framebuffer of half floats.
/// @param normalMap  as stored, n * 0.5 + 0.5, of any length
Comparison refraction(Field normalMap, Field heights, bool flip, double specular) {
    const int width = normalMap.width;
    const int height = normalMap.height;
    Field ground = {width, height, 4, {}};
    for (int i = 0; i < width * height; ++i)
        ground.values.insert(ground.values.end(), {(i % width + 0.5) / width, (i / width + 0.5) / height, 0.25, 0.5});
    const GLuint textures[4] = {toTexture(heights), toTexture(normalMap), toTexture(ground), toTexture(ground)};
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, textures[3], 0);

    ShallowWaterRenderer renderer;
    renderer.init();
    renderer.setScreenSize(width, height);
    renderer.setTexture(static_cast<int>(textures[2]));
    renderer.setDrawFrameBuffer(framebuffer);
    renderer.setBGFlip(flip);
    renderer.setHeightMax(50.0F);
    TestPeer::mMaterialSpecular(renderer) = static_cast<float>(specular);
    renderer.render(textures[0], textures[1]);

    Field expected = ground;
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const Vector n = {(normalMap.at(column, row, 0) - 0.5) * 2.0, (normalMap.at(column, row, 1) - 0.5) * 2.0,
                              (normalMap.at(column, row, 2) - 0.5) * 2.0};
            const double h = heights.at(column, row) * 50.0;
            const Vector ray = refract({0.0, 0.0, -1.0}, {n.y, n.x, n.z}, 1.0 / 1.33);
            // Near to a ray that runs along the ground the formula is too steep for floats.
            const bool steep = std::fabs(ray.z) < 0.05;
            const double t = -h / ray.z;
            const double u = std::clamp((column + 0.5 + ray.x * t) / width, 0.5 / width, 1.0 - 0.5 / width);
            const double v = std::clamp((row + 0.5 + ray.y * t) / height, 0.5 / height, 1.0 - 0.5 / height);
            const double highlight = specularAt(n, specular);
            expected.at(column, row, 0) = (steep ? open : u) + highlight;
            expected.at(column, row, 1) = (steep ? open : flip ? 1.0 - v : v) + highlight;
            expected.at(column, row, 2) = 0.25 + highlight;
            expected.at(column, row, 3) = 0.5 + highlight;
        }
    }
    const Comparison comparison = compare(textures[3], expected);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(4, textures);
    return comparison;
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
    const GLuint texture = headless::makeTexture(GL_RGBA8, width, height,
                                                 std::vector<float>(picture.values.begin(), picture.values.end()));
    renderer.setTexture(static_cast<int>(texture));
    renderer.render(water.getTexture(), normalMap.getTexture());
    glDeleteTextures(1, &texture);

    Comparison comparison = {width, height, 4, headless::readFramebuffer(width, height).rgba, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            for (int c = 0; c < 4; ++c)
                comparison.expected.push_back(picture.at(column, flip ? height - 1 - row : row, c));
        }
    }
    return comparison;
}

Field withoutNormals(int width, int height) {
    return {width, height, 3, std::vector<double>(static_cast<size_t>(width * height) * 3)};
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

constexpr Line point(float x, float y, float radius, float strength) {
    return {{x, y, x, y}, radius, strength};
}

constexpr Wave wave = {30.0F, 9.7F, 0.8F, 7.3F, 2.0F};

} // namespace

const PictureTable& waterPictures() {
    static const PictureTable table = {
        {"intensity_shapes_97x61",
         [] {
             return paintedShapes(97, 61, wave,
                                  {{{20.2F, 12.3F, 77.7F, 40.9F}, 11.1F, 0.9F}, point(50.0F, 30.0F, 13.2F, 0.6F)});
         },
         oneStep, steepest(9.7, 0.8)},
        {"intensity_beyond_every_border_64x160",
         [] {
             return paintedShapes(64, 160, {155.0F, 10.2F, 0.5F, 11.0F, 0.75F},
                                  {{{-5.2F, 40.2F, 70.4F, 60.3F}, 9.3F, 0.7F},
                                   {{30.0F, -30.3F, 31.0F, 5.2F}, 8.4F, 0.9F},
                                   point(0.0F, 0.0F, 20.3F, 0.8F),
                                   point(64.0F, 160.0F, 20.3F, 0.4F),
                                   point(-40.0F, 80.0F, 15.0F, 0.9F)});
         },
         oneStep, steepest(8.4, 0.9)},
        {"iterative_drop_97x61", [] { return iterativeDrop(97, 61, point(40.3F, 20.8F, 17.3F, 0.4F), 1.0F); }, oneStep},
        {"iterative_drop_that_wipes_64x160",
         [] { return iterativeDrop(64, 160, point(0.5F, 159.0F, 30.0F, -0.9F), 0.0F); }, oneStep},
        {"iterative_drop_beyond_the_corner_97x61",
         [] { return iterativeDrop(97, 61, point(101.0F, -3.0F, 25.0F, 0.4F), 0.75F); }, oneStep},
        {"iterative_line_97x61",
         [] {
             return iterativeLine(97, 61, {{10.2F, 50.1F, 80.7F, 12.4F}, 14.2F, 0.45F}, 1.0F);
         },
         oneStep},
        {"iterative_line_beyond_the_border_64x160",
         [] {
             return iterativeLine(64, 160, {{-20.0F, 80.0F, 90.0F, 80.0F}, 22.0F, 0.45F}, 0.5F);
         },
         oneStep},
        {"iterative_line_without_length_97x61",
         [] { return iterativeLine(97, 61, point(30.0F, 30.0F, 9.0F, 0.4F), 1); }, oneStep},
        {"iterative_wave_97x61",
         [] {
             return iterativeWave(97, 61, {30.0F, 9.0F, 0.45F, 12.0F, 3.0F}, 1.0F);
         },
         oneStep},
        {"iterative_wave_64x160",
         [] {
             return iterativeWave(64, 160, {2.0F, 30.0F, 0.7F, 25.0F, 0.5F}, 0.25F);
         },
         oneStep},
        {"iterative_pass_97x61", [] { return iterativePass(97, 61); }, twoSteps},
        {"iterative_pass_64x160", [] { return iterativePass(64, 160); }, twoSteps},
        {"iterative_pass_one_row", [] { return iterativePass(13, 1); }, twoSteps},
        {"pond_drop_97x61", [] { return pondDrop(97, 61, point(30.3F, 10.2F, 22.2F, 0.7F)); }, oneStep},
        {"pond_drop_beyond_the_corner_64x160", [] { return pondDrop(64, 160, point(66.0F, 158.0F, 40.0F, -0.8F)); },
         oneStep},
        {"pond_line_97x61",
         [] {
             return pondLine(97, 61, {{-0.4F, 0.3F, 0.5F, -0.2F}, 0.6F, 0.9F});
         },
         oneStep},
        {"pond_line_capped_64x160",
         [] {
             return pondLine(64, 160, {{1.0F, 1.0F, -1.2F, -0.9F}, 1.1F, 0.45F});
         },
         oneStep},
        {"pond_step_97x61", [] { return pondStep(97, 61); }, twoSteps},
        {"pond_step_64x160", [] { return pondStep(64, 160); }, twoSteps},
        {"normals_97x61", [] { return normals(97, 61, randomField(97, 61, 1, -1.0, 1.0), 2.0F); }, oneStep},
        {"normals_of_state_64x160", [] { return normals(64, 160, randomField(64, 160, 2, -0.02, 0.02), 100.0F); },
         oneStep},
        {"normals_of_small_heights_97x61", [] { return normals(97, 61, randomField(31, 13, 1, -1.0, 1.0), 1.0F); },
         oneStep},
        {"normals_of_large_heights_64x160", [] { return normals(64, 160, randomField(201, 333, 1, -1.0, 1.0), 1.0F); },
         oneStep},
        {"refraction_97x61",
         [] { return refraction(unitNormals(97, 61), randomField(97, 61, 1, -0.2, 0.2), false, 0.0); }, fourSteps},
        {"refraction_flipped_64x160",
         [] { return refraction(unitNormals(64, 160), randomField(64, 160, 2, -0.2, 0.4), true, 0.0); }, fourSteps},
        {"refraction_of_any_normal_97x61",
         [] { return refraction(randomField(97, 61, 3, 0.0, 1.0), randomField(97, 61, 1, 0.0, 0.2), false, 0.0); },
         fourSteps},
        {"refraction_before_build_64x160",
         [] { return refraction(withoutNormals(64, 160), randomField(64, 160, 1, 0.0, 0.2), false, 0.0); }, fourSteps},
        {"refraction_highlights_97x61",
         [] { return refraction(unitNormals(97, 61), randomField(97, 61, 1, -0.2, 0.2), false, 0.7); }, fourSteps},
        {"still_water_97x61", [] { return stillWater(97, 61, false); }, byteStep},
        {"still_water_flipped_64x160", [] { return stillWater(64, 160, true); }, byteStep},
    };
    return table;
}

} // namespace tidalume::pictures
