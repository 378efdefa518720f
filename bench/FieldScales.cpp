#include "bench/Benchmarks.h"
#include "bench/LookFrames.h"
#include "headless/Pixels.h"

#include <cmath>

namespace tidalume::bench {
namespace {

constexpr int width = 540;
constexpr int height = 960;

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

std::unique_ptr<WaterLook> water(float scale) {
    auto look = std::make_unique<WaterLook>();
    look->setFieldScale(scale);
    look->setPicture(tiles(), width, height, PictureTop::LastRow);
    return look;
}

std::unique_ptr<Look> stillWater(float scale) {
    auto look = water(scale);
    look->setTouchStrength(0.0F);
    return look;
}

template <typename Metaballs>
std::unique_ptr<Look> metaballs(float scale) {
    auto look = std::make_unique<Metaballs>();
    look->setFieldScale(scale);
    return look;
}

constexpr struct {
    const char* look;
    std::unique_ptr<Look> (*make)(float scale);
} looks[] = {{"WaterLook", [](float scale) -> std::unique_ptr<Look> { return water(scale); }},
             {"WaterLook, still", stillWater},
             {"BlobsLook", metaballs<BlobsLook>},
             {"SprayLook", metaballs<SprayLook>}};

constexpr struct {
    const char* name;
    float scale;
} scales[] = {{"1", 1.0F}, {"1/2", 0.5F}, {"1/3", 1.0F / 3.0F}};

} // namespace

/// The same touches at the same times for all of them.
void registerFieldScales(Run& run) {
    for (const auto& look : looks) {
        const auto first = std::make_shared<std::vector<float>>();
        for (const auto& scale : scales) {
            const std::string name = std::string(look.look) + "/field scale " + scale.name;
            registerTimed(name, std::max(1, run.pairs / 2), [=, &run](benchmark::State& state) {
                run.screen(width, height);
                LookFrames frames(look.make(scale.scale), width, height);
                const double time = median(state, [&] { return seconds({[] {}, [&] { frames.draw(); }}, 1); });
                const std::vector<float> picture = headless::readFramebuffer(width, height).rgba;
                if (first->empty()) *first = picture;
                run.results.fieldScales.push_back({look.look, scale.name, time, meanDifference(picture, *first)});
            });
        }
    }
}

} // namespace tidalume::bench
