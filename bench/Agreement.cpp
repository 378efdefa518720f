#include "bench/Benchmarks.h"
#include "headless/Pixels.h"
#include "reference/ParticleStep.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>
#include <random>

namespace tidalume::bench {
namespace {

using headless::PixelArray;

constexpr int width = 193;
constexpr int height = 61;

/// What is on every surface of a new stage, and last on framebuffer 0, after an action in one form.
std::vector<PixelArray> drawn(Form form, const std::function<void(Stage&)>& action) {
    const headless::HeadlessContext context(width, height);
    Stage stage(width, height);
    TestPeer::mMaterialSpecular(stage.water) = 0.5F;
    glClearColor(0.25F, 0.5F, 0.75F, 0.5F);
    glClear(GL_COLOR_BUFFER_BIT);
    stage.use(form);
    action(stage);
    std::vector<PixelArray> pictures;
    for (const Surface& surface : stage.surfaces())
        pictures.push_back(headless::readTexture(surface.texture, surface.width, surface.height));
    pictures.push_back(headless::readFramebuffer(width, height));
    return pictures;
}

/// Below 1/16 the step at 1/16: the plain forms' filtered reads mix in up to 1e-5 of the neighbouring texels.
double halfFloatStep(double value) {
    return std::ldexp(1.0, std::max(std::ilogb(value), -4) - 10);
}

/// In steps of the values' format: of half floats on the surfaces (see halfFloatStep), of 8 bits on framebuffer 0.
double largestDifference(const std::vector<PixelArray>& a, const std::vector<PixelArray>& b) {
    double largest = 0.0;
    for (size_t picture = 0; picture < a.size(); ++picture) {
        const bool bytes = picture + 1 == a.size();
        for (size_t i = 0; i < a[picture].rgba.size(); ++i) {
            const double x = a[picture].rgba[i];
            const double y = b[picture].rgba[i];
            if (std::isnan(x) || std::isnan(y)) return HUGE_VAL;
            const double step = bytes ? 1.0 / 255.0 : halfFloatStep(std::max(std::abs(x), std::abs(y)));
            largest = std::max(largest, std::abs(x - y) / step);
        }
    }
    return largest;
}

/// Of every operation but the whole water frame, which is made of three others.
bool shadersAgree() {
    constexpr double oneStep = 1.01;
    bool agree = true;
    const std::vector<PixelArray> before = drawn(Form::Library, [](Stage&) {});
    const auto check = [&](const std::string& name, size_t index) {
        const auto run = [index](Stage& stage) { stage.operations()[index].run(); };
        const std::vector<PixelArray> library = drawn(Form::Library, run);
        const double difference = largestDifference(library, drawn(Form::Plain, run));
        const bool draws = largestDifference(library, before) > oneStep;
        agree = agree && draws && difference <= oneStep;
        std::cout << name << ": " << (draws ? "" : "draws nothing; ") << difference << " steps apart\n";
    };
    std::vector<std::string> names;
    drawn(Form::Library, [&](Stage& stage) {
        for (const Operation& operation : stage.operations())
            names.push_back(operation.name);
    });
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i].find("water frame") == std::string::npos) check(names[i], i);
    return agree;
}

/// The field of the balls against their sum in each fragment. The driver snaps a point to a fraction of a pixel and
/// rounds the field with each ball, which the sum does not: 11 to 14 steps were seen for balls of 2 to 15 pixels.
bool loopAgrees() {
    constexpr double steps = 16.0;
    const auto field = [](const std::function<void(Stage&)>& draw) {
        const std::vector<PixelArray> pictures = drawn(Form::Library, draw);
        return std::vector<PixelArray>{pictures[pictures.size() - 2], pictures.back()};
    };
    const std::vector<PixelArray> balls = field([](Stage& stage) {
        stage.metaballs.addMetaballs(stage.balls.data(), static_cast<unsigned int>(stage.balls.size() / 6));
    });
    const double difference = largestDifference(balls, field([](Stage& stage) { stage.sumBallsInFragments(); }));
    std::cout << "loop over the balls: " << difference << " steps apart\n";
    return difference <= steps;
}

/// To the bit, also where the last particles do not fill a vector register.
bool particlesAgree() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> any(-1000.0F, 1000.0F);
    std::uniform_int_distribution<int> quarters(0, 320); // some reach an age of exactly 40
    bool agree = true;
    for (const size_t count : {1U, 2U, 3U, 4U, 5U, 7U, 8U, 15U, 1000U, 65535U}) {
        ParticleManager manager;
        std::vector<Particle> literal(count);
        for (Particle& particle : literal)
            particle = {{any(random), any(random)},
                        any(random),
                        0.25F * static_cast<float>(quarters(random)),
                        {any(random), any(random)}};
        std::vector<Particle> byCalls = literal;
        *manager.getParticleVector() = literal;
        for (int step = 0; step < 100; ++step) {
            manager.step(0.25F);
            reference::plain::step(literal, 0.25F);
            reference::plain::stepByCalls(byCalls, 0.25F);
        }
        for (const auto* other : {&literal, &byCalls})
            agree =
                agree && std::memcmp(manager.getParticleVector()->data(), other->data(), count * sizeof(Particle)) == 0;
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
