#include "bench/Benchmarks.h"
#include "bench/LookFrames.h"
#include "headless/Pixels.h"

#include <cmath>

namespace tidalume::bench {
namespace {

constexpr int width = 540;
constexpr int height = 960;

constexpr struct {
    const char* name;
    float scale;
    float touchStrength;
} variants[] = {{"1", 1.0F, 0.5F}, {"1/2", 0.5F, 0.5F}, {"1/3", 1.0F / 3.0F, 0.5F}, {"1, still", 1.0F, 0.0F}};

/// A picture of soft tiles.
GLuint tiles() {
    std::vector<float> colors;
    for (int i = 0; i < width * height; ++i) {
        const auto x = static_cast<float>(i % width);
        const int row = i / width;
        const auto y = static_cast<float>(row);
        const float light = 0.5F + 0.4F * std::sin(0.1F * x) * std::sin(0.1F * y);
        colors.insert(colors.end(), {light, light, light, 1.0F});
    }
    return headless::makeTexture(GL_RGBA8, width, height, colors);
}

/// Of red, green and blue.
double meanDifference(const std::vector<float>& a, const std::vector<float>& b) {
    double sum = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        sum += std::abs(a[i] - b[i]);
    return 255.0 * sum / (0.75 * static_cast<double>(a.size()));
}

} // namespace

/// The same touches at the same times for all of them.
void registerFieldScales(Run& run) {
    const auto first = std::make_shared<std::vector<float>>();
    for (const auto& variant : variants) {
        const std::string name = std::string("WaterLook/field scale ") + variant.name;
        registerTimed(name, std::max(1, run.pairs / 2), [=, &run](benchmark::State& state) {
            run.screen(width, height);
            auto water = std::make_unique<WaterLook>();
            water->setFieldScale(variant.scale);
            water->setTouchStrength(variant.touchStrength);
            water->setPicture(tiles(), width, height, PictureTop::LastRow);
            LookFrames frames(std::move(water), width, height);
            const double time = median(state, [&] { return seconds({[] {}, [&] { frames.draw(); }}, 1); });
            const std::vector<float> picture = headless::readFramebuffer(width, height).rgba;
            if (first->empty()) *first = picture;
            run.results.fieldScales.push_back({variant.name, time, meanDifference(picture, *first)});
        });
    }
}

} // namespace tidalume::bench
