#include "effects/water/IntensityMapBuilder.h"
#include "effects/water/NormalMapBuilder.h"
#include "effects/water/ShallowWater.h"
#include "effects/water/ShallowWaterIterative.h"
#include "effects/water/ShallowWaterRenderer.h"
#include "tests/pictures/Field.h"

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

// Disturbances, in pixels from the top-left corner: what they add at a point, and the call that paints them.

/// With round ends.
struct Line {
    float begin[2], end[2], radius, strength;

    double at(double x, double y) const {
        const double dx = end[0] - begin[0], dy = end[1] - begin[1];
        const double along = (x - begin[0]) * dx + (y - begin[1]) * dy;
        const double t = dx == 0.0 && dy == 0.0 ? 0.0 : std::clamp(along / (dx * dx + dy * dy), 0.0, 1.0);
        return bump(std::hypot(x - begin[0] - t * dx, y - begin[1] - t * dy), radius, strength);
    }

    /// Whether a point lies in the rectangle that IntensityMapBuilder paints.
    bool reaches(double x, double y) const {
        return x > std::min(begin[0], end[0]) - radius && x < std::max(begin[0], end[0]) + radius &&
               y > std::min(begin[1], end[1]) - radius && y < std::max(begin[1], end[1]) + radius;
    }

    template <typename Water>
    void paint(Water& water, float preserveWeight) {
        water.addDropLine(begin, end, radius, strength, preserveWeight);
    }
};

/// A line that begins where it ends.
struct Drop : Line {
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

    template <typename Water>
    void paint(Water& water, float preserveWeight) {
        water.addHorizontalWave(center, radius, strength, waveRadius, waveCount, preserveWeight);
    }
};

/// A wave over the lower border, and lines over it and over the other borders: each replaces what its rectangle held.
Comparison intensity() {
    constexpr int width = 64, height = 160;
    // Their corners lie on quarters of a pixel, which every driver keeps.
    HorizontalWave wave = {width, 140, 10.25, 0.5, 15, 0.75};
    Line lines[] = {{{-5, 40}, {70.5, 60.25}, 9, 0.7},
                    {{30, -30.25}, {31, 5}, 8.25, 0.9},
                    {{64, 160}, {64, 160}, 20.25, 0.4},
                    {{20.25, 130}, {31, 115.25}, 11, 0.6},
                    {{-40, 80}, {-40, 80}, 15, 0.9}};
    IntensityMapBuilder builder;
    makeReady(width, height, builder);
    wave.paint(builder, 0.3F);
    for (Line& line : lines)
        line.paint(builder, 0.3F);
    return compare(headless::readTexture(builder.getTexture(), width, height), [&](int column, int row) -> Values {
        const double x = column + 0.5, y = height - row - 0.5;
        double value = wave.at(x, y);
        for (const Line& line : lines)
            if (line.reaches(x, y)) value = line.at(x, y);
        return {value};
    });
}

/// Makes a simulation ready, in a random state.
template <typename Water>
Field makeRough(Water& water, int width, int height, int channels) {
    makeReady(width, height, water);
    const Field state = randomHalves(width, height, channels, -0.25, 0.25);
    overwrite(water.getTexture(), state);
    return state;
}

template <typename Shape>
Comparison disturbed(int width, int height, Shape shape, float preserveWeight) {
    ShallowWaterIterative water;
    const Field state = makeRough(water, width, height, 2);
    shape.paint(water, preserveWeight);
    return compare(headless::readTexture(water.getTexture(), width, height), [&](int x, int y) -> Values {
        const Values old = state.at(x, y);
        return {old[0] * preserveWeight + shape.at(x + 0.5, height - y - 0.5), old[1]};
    });
}

Comparison iterativePass() {
    constexpr int width = 64, height = 160;
    ShallowWaterIterative water;
    const Field state = makeRough(water, width, height, 2);
    water.setIterationCount(1);
    water.update();
    return compare(headless::readTexture(water.getTexture(), width, height), [&](int x, int y) -> Values {
        const Values old = state.at(x, y);
        const double v = (old[1] + (neighbours(state, x, y) * 0.25 - old[0]) * 2.0) * 0.99;
        return {old[0] + v - std::copysign(0.00001, v), v};
    });
}

// The three-buffer simulation, whose y runs upwards.

/// Runs the next step that is due.
void runStep(ShallowWater& pond) {
    const GLuint before = pond.getTexture();
    while (pond.getTexture() == before)
        pond.update();
}

Comparison pondDrop() {
    constexpr int width = 64, height = 160;
    Line drop = {{66, 158}, {66, 158}, 40, -0.8};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, 1);
    pond.addDrop(drop.begin, drop.radius * 2.0F, drop.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        return {std::pow(state.at(x, y)[0], 2.0) + std::pow(drop.at(x + 0.5, y + 0.5), 2.0)};
    });
}

/// Ends and radius are in normalised device coordinates; the state before the newest is what the newest is made of.
Comparison pondLine() {
    constexpr int width = 97, height = 61;
    Line line = {{1, 1}, {-0.4, 0.3}, 0.7, 0.25};
    ShallowWater pond;
    const Field state = makeRough(pond, width, height, 1);
    runStep(pond);
    pond.addDropLine(line.begin, line.end, line.radius, line.strength);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        double sum = state.at(x, y)[0];
        for (const float* end : {line.begin, line.end}) {
            const double dx = (x + 0.5) / width - (end[0] * 0.5 + 0.5);
            const double dy = (y + 0.5) / height - (end[1] * 0.5 + 0.5);
            const double a = std::max(0.0, 1.0 - std::hypot(dx, dy) / (line.radius * 0.5));
            sum += (0.5 - std::cos(a * pi) * 0.5) * line.strength * 0.4;
        }
        return {std::min<double>(sum, line.strength)};
    });
}

Comparison pondStep() {
    constexpr int width = 97, height = 61;
    ShallowWater pond;
    const Field older = makeRough(pond, width, height, 1);
    runStep(pond);
    const Field newer = randomHalves(width, height, 1, -0.25, 0.25, 9);
    overwrite(pond.getTexture(), newer);
    runStep(pond);
    const double k = std::pow(0.13 * 2.0 / 0.4, 2.0);
    const double q = 1.0 / (0.05 * 0.13 + 2.0);
    return compare(headless::readTexture(pond.getTexture(), width, height), [&](int x, int y) -> Values {
        return {(4.0 - 8.0 * k) * q * newer.at(x, y)[0] + (0.05 * 0.13 - 2.0) * q * older.at(x, y)[0] +
                2.0 * k * q * neighbours(newer, x, y)};
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

/// As GLSL defines it.
Values refract(const Values& i, const Values& n, double eta) {
    const double cosine = (n * i).sum();
    const double k = 1.0 - eta * eta * (1.0 - cosine * cosine);
    if (k < 0.0) return {0.0, 0.0, 0.0};
    return eta * i - (eta * cosine + std::sqrt(k)) * n;
}

/// Random normals and heights over a picture whose red and green are its own coordinates, into a framebuffer of half
/// floats.
Comparison refraction(int width, int height, int channelsOfHeights, bool flip) {
    const Field heights = randomHalves(width, height, channelsOfHeights, -0.2, 0.4);
    Field normalMap = randomHalves(width, height, 3, 0.25, 0.75); // n * 0.5 + 0.5, of any length
    Field ground = {width, height, 4};
    for (int i = 0; i < width * height; ++i) {
        normalMap.values[static_cast<size_t>(3 * i + 2)] += 0.25; // most point upwards
        ground.values.insert(ground.values.end(), {(i % width + 0.5) / width, (i / width + 0.5) / height, 0.25, 0.5});
    }
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
    renderer.render(Texture(halfFloats[channelsOfHeights - 1], heights).name, Texture(GL_RGB16F, normalMap).name);
    glDeleteFramebuffers(1, &framebuffer);

    return compare(headless::readTexture(target.name, width, height), [&](int column, int row) -> Values {
        const Values n = (normalMap.at(column, row) - 0.5) * 2.0;
        const Values ray = refract({0.0, 0.0, -1.0}, {n[1], n[0], n[2]}, 1.0 / 1.33);
        const double t = -heights.at(column, row)[0] * 50.0 / ray[2];
        double u = std::clamp((column + 0.5 + ray[0] * t) / width, 0.5 / width, 1.0 - 0.5 / width);
        double v = std::clamp((row + 0.5 + ray[1] * t) / height, 0.5 / height, 1.0 - 0.5 / height);
        // Near to a ray that runs along the ground the formula is too steep for floats.
        if (std::fabs(ray[2]) < 0.05) u = v = open;
        return {u, flip ? 1.0 - v : v, 0.25, 0.5};
    });
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

const Drop corner = {{{0.5, 159}, {0.5, 159}, 30, -0.9}};
const Line border = {{-10, 51}, {81, 12}, 14, 0.4};
const HorizontalWave waves = {97, 2, 9, 0.45, 12, 3};

} // namespace

PictureTable waterPictures() {
    return {
        {"intensity_64x160", intensity, oneStep},
        {"iterative_drop_64x160", [] { return disturbed(64, 160, corner, 0.0F); }, oneStep},
        {"iterative_line_97x61", [] { return disturbed(97, 61, border, 0.75F); }, oneStep},
        {"iterative_wave_97x61", [] { return disturbed(97, 61, waves, 1.0F); }, oneStep},
        {"iterative_pass_64x160", iterativePass, twoSteps},
        {"pond_drop_64x160", pondDrop, oneStep},
        {"pond_line_97x61", pondLine, oneStep},
        {"pond_step_97x61", pondStep, twoSteps},
        {"normals_of_state_64x160", [] { return normals(64, 160, randomHalves(64, 160, 2, -0.02, 0.02), 100); },
         oneStep},
        {"normals_of_fewer_heights_97x61", [] { return normals(97, 61, randomHalves(31, 13, 1, -1, 1), 2); }, oneStep},
        {"refraction_97x61", [] { return refraction(97, 61, 1, false); }, fourSteps},
        {"refraction_flipped_64x160", [] { return refraction(64, 160, 2, true); }, fourSteps},
        {"still_water_97x61", [] { return stillWater(97, 61, false); }, byteStep},
        {"still_water_flipped_64x160", [] { return stillWater(64, 160, true); }, byteStep},
    };
}

} // namespace tidalume::pictures
