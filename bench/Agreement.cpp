#include "bench/BallField.h"
#include "bench/Benchmarks.h"
#include "bench/Particles.h"
#include "headless/Pixels.h"
#include "reference/ParticleStep.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>

namespace tidalume::bench {
namespace {

using headless::PixelArray;

constexpr int width = 193;
constexpr int height = 61;

/// Below 1/16 the step at 1/16: the plain forms' filtered reads mix in up to 1e-5 of the neighbouring texels.
double halfFloatStep(double value) {
    return std::ldexp(1.0, std::max(std::ilogb(value), -4) - 10);
}

double eightBitStep(double /*value*/) {
    return 1.0 / 255.0;
}

struct Picture {
    PixelArray pixels;
    double (*stepAt)(double value); ///< of the format
};

/// In steps of the format, where the larger value is.
double largestDifference(const Picture& a, const Picture& b) {
    double largest = 0.0;
    for (size_t i = 0; i < a.pixels.rgba.size(); ++i) {
        const double x = a.pixels.rgba[i];
        const double y = b.pixels.rgba[i];
        if (std::isnan(x) || std::isnan(y)) return HUGE_VAL;
        largest = std::max(largest, std::abs(x - y) / a.stepAt(std::max(std::abs(x), std::abs(y))));
    }
    return largest;
}

double largestDifference(const std::vector<Picture>& a, const std::vector<Picture>& b) {
    double largest = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, largestDifference(a[i], b[i]));
    return largest;
}

/// What is in every texture of a new screen and on its framebuffer 0, after an operation in one form; null: none.
std::vector<Picture> drawn(Form form, const char* operation) {
    Screen screen(width, height);
    glClearColor(0.25F, 0.5F, 0.75F, 0.5F);
    glClear(GL_COLOR_BUFFER_BIT);
    screen.use(form);
    if (operation) screen.operation(operation)();
    std::vector<Picture> pictures = {{headless::readFramebuffer(width, height), eightBitStep}};
    for (const auto& [texture, storage] : screen.targets())
        pictures.push_back({headless::readTexture(texture, storage.width, storage.height), halfFloatStep});
    return pictures;
}

/// Of every operation but the water frame, which is made of others.
bool shadersAgree() {
    constexpr double oneStep = 1.01;
    bool agree = true;
    const std::vector<Picture> before = drawn(Form::Library, nullptr);
    for (const MeasuredOperation& operation : measuredOperations()) {
        if (operation.name == waterFrame) continue;
        const std::vector<Picture> library = drawn(Form::Library, operation.name.c_str());
        const double difference = largestDifference(library, drawn(Form::Plain, operation.name.c_str()));
        const bool draws = largestDifference(library, before) > oneStep;
        agree = agree && draws && difference <= oneStep;
        std::cout << operation.name << ": " << (draws ? "" : "draws nothing; ") << difference << " steps apart\n";
    }
    return agree;
}

/// The field of the balls against their sum in each fragment. The driver snaps a point to a fraction of a pixel and
/// rounds the field with each ball, which the sum does not: 11 to 14 steps were seen for balls of 2 to 15 pixels.
bool loopAgrees() {
    constexpr double steps = 16.0;
    const headless::HeadlessContext context(width, height);
    BallField field(width, height, 64, 0.08F * width);
    const auto read = [&]() -> Picture {
        return {headless::readTexture(field.texture(), field.width(), field.height()), halfFloatStep};
    };
    field.drawPoints();
    const Picture points = read();
    field.sumInLoop();
    const double difference = largestDifference(points, read());
    std::cout << "loop over the balls: " << difference << " steps apart\n";
    return difference <= steps;
}

/// To the bit, also where the last particles do not fill a vector register. The first reaches an age of exactly 40.
bool particlesAgree() {
    bool agree = true;
    for (const int count : {1, 2, 3, 4, 5, 7, 8, 15, 1000, 65535}) {
        ParticleManager manager;
        std::vector<Particle>& particles = *manager.getParticleVector();
        particles = manyParticles(count);
        std::vector<Particle> literal = particles;
        std::vector<Particle> byCalls = particles;
        for (int step = 0; step < 200; ++step) {
            manager.step(0.25F);
            reference::plain::step(literal, 0.25F);
            reference::plain::stepByCalls(byCalls, 0.25F);
        }
        for (const auto* other : {&literal, &byCalls})
            agree = agree && std::memcmp(particles.data(), other->data(), particles.size() * sizeof(Particle)) == 0;
    }
    std::cout << "ParticleManager::step: " << (agree ? "the same bits\n" : "other bits\n");
    return agree;
}

} // namespace

bool checkForms() {
    const bool agree[] = {shadersAgree(), loopAgrees(), particlesAgree()};
    return std::all_of(std::begin(agree), std::end(agree), [](bool one) { return one; });
}

} // namespace tidalume::bench
