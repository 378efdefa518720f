#include "bench/Benchmarks.h"
#include "bench/LookFrames.h"
#include "headless/Pixels.h"

#include <cmath>
#include <map>

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

std::unique_ptr<Look> water(float scale, float touchStrength) {
    auto look = std::make_unique<WaterLook>();
    look->setFieldScale(scale);
    look->setTouchStrength(touchStrength);
    look->setPicture(tiles(), width, height, PictureTop::LastRow);
    return look;
}

std::unique_ptr<Look> movingWater(float scale) {
    return water(scale, 0.5F);
}

std::unique_ptr<Look> stillWater(float scale) {
    return water(scale, 0.0F);
}

template <typename Metaballs>
std::unique_ptr<Look> metaballs(float scale) {
    auto look = std::make_unique<Metaballs>();
    look->setFieldScale(scale);
    return look;
}

/// The first of a look is what the others of its name are compared with.
constexpr struct {
    const char* look;
    const char* name;
    float scale;
    std::unique_ptr<Look> (*make)(float scale);
} variants[] = {{"WaterLook", "1", 1.0F, movingWater},
                {"WaterLook", "1/2", 1.0F / 2.0F, movingWater},
                {"WaterLook", "1/3", 1.0F / 3.0F, movingWater},
                {"WaterLook", "1, still", 1.0F, stillWater},
                {"WaterLook", "1/2, still", 1.0F / 2.0F, stillWater},
                {"WaterLook", "1/3, still", 1.0F / 3.0F, stillWater},
                {"BlobsLook", "1", 1.0F, metaballs<BlobsLook>},
                {"BlobsLook", "1/2", 1.0F / 2.0F, metaballs<BlobsLook>},
                {"BlobsLook", "1/3", 1.0F / 3.0F, metaballs<BlobsLook>},
                {"SprayLook", "1", 1.0F, metaballs<SprayLook>},
                {"SprayLook", "1/2", 1.0F / 2.0F, metaballs<SprayLook>},
                {"SprayLook", "1/3", 1.0F / 3.0F, metaballs<SprayLook>}};

} // namespace

/// The same touches at the same times for all of them.
void registerFieldScales(Run& run) {
    const auto firsts = std::make_shared<std::map<std::string, std::vector<float>>>();
    for (const auto& variant : variants) {
        const std::string name = std::string(variant.look) + "/field scale " + variant.name;
        registerTimed(name, std::max(1, run.pairs / 2), [=, &run](benchmark::State& state) {
            run.screen(width, height);
            LookFrames frames(variant.make(variant.scale), width, height);
            const double time = median(state, [&] { return seconds({[] {}, [&] { frames.draw(); }}, 1); });
            const std::vector<float> picture = headless::readFramebuffer(width, height).rgba;
            const std::vector<float>& first = firsts->emplace(variant.look, picture).first->second;
            run.results.fieldScales.push_back({variant.look, variant.name, time, meanDifference(picture, first)});
        });
    }
}

} // namespace tidalume::bench
