#include "gallery/Background.h"

#include "gallery/Ground.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tidalume::gallery {

namespace {

using Rgb = std::array<float, 3>; // weighted sums of 8-bit channels

// The source pixels that make up one pixel of the result, with weights that sum to 1.
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

// A triangle filter that spans at least one result pixel, so that shrinking does not alias.
std::vector<Taps> tapsFor(int sourceLength, int resultLength, double scale) {
    const double support = std::max(1.0, 1.0 / scale);
    const double start = (sourceLength - resultLength / scale) / 2;
    std::vector<Taps> taps(static_cast<std::size_t>(resultLength));
    for (int i = 0; i < resultLength; ++i) {
        const double middle = start + (i + 0.5) / scale - 0.5;
        const int first = std::clamp(static_cast<int>(std::floor(middle - support)) + 1, 0, sourceLength - 1);
        const int last = std::clamp(static_cast<int>(std::ceil(middle + support)) - 1, first, sourceLength - 1);
        Taps& tap = taps[static_cast<std::size_t>(i)];
        tap.first = first;
        double sum = 0;
        for (int j = first; j <= last; ++j) {
            const double weight = std::max(1e-6, 1 - std::abs(j - middle) / support);
            tap.weights.push_back(static_cast<float>(weight));
            sum += weight;
        }
        for (float& weight : tap.weights)
            weight = static_cast<float>(weight / sum);
    }
    return taps;
}

// One row of the source, laid over black and scaled in width.
std::vector<Rgb> scaledRow(const Picture& picture, int y, const std::vector<Taps>& columns) {
    std::vector<Rgb> row;
    row.reserve(columns.size());
    for (const Taps& tap : columns) {
        Rgb sum = {};
        const std::uint8_t* pixel = picture.pixel(tap.first, y);
        for (const float weight : tap.weights) {
            const float opaqueWeight = weight * static_cast<float>(pixel[3]) / 255.0F;
            for (std::size_t c = 0; c < 3; ++c)
                sum[c] += opaqueWeight * static_cast<float>(pixel[c]);
            pixel += 4;
        }
        row.push_back(sum);
    }
    return row;
}

} // namespace

Picture coverFit(const Picture& picture, int width, int height) {
    const double scale =
        std::max(static_cast<double>(width) / picture.width, static_cast<double>(height) / picture.height);
    const std::vector<Taps> columns = tapsFor(picture.width, width, scale);
    const std::vector<Taps> rows = tapsFor(picture.height, height, scale);

    Picture result(width, height);
    std::vector<Rgb> sums(static_cast<std::size_t>(width));
    // The source's rows, each scaled when it is first needed and dropped after its last use.
    std::vector<std::vector<Rgb>> scaled(static_cast<std::size_t>(picture.height));
    std::size_t dropped = 0;
    for (int y = 0; y < height; ++y) {
        const Taps& tap = rows[static_cast<std::size_t>(y)];
        for (; dropped < static_cast<std::size_t>(tap.first); ++dropped)
            scaled[dropped] = {};
        std::fill(sums.begin(), sums.end(), Rgb{});
        for (std::size_t j = 0; j < tap.weights.size(); ++j) {
            std::vector<Rgb>& row = scaled[static_cast<std::size_t>(tap.first) + j];
            if (row.empty()) row = scaledRow(picture, tap.first + static_cast<int>(j), columns);
            for (std::size_t x = 0; x < sums.size(); ++x) {
                for (std::size_t c = 0; c < 3; ++c)
                    sums[x][c] += tap.weights[j] * row[x][c];
            }
        }
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = result.pixel(x, y);
            for (const float sum : sums[static_cast<std::size_t>(x)])
                *pixel++ = static_cast<std::uint8_t>(std::lround(sum));
            *pixel = 255;
        }
    }
    return result;
}

Picture makeBackground(const Picture& chosen, std::string_view ground, int width, int height, std::uint32_t seed) {
    return chosen.width > 0 ? coverFit(chosen, width, height) : groundNamed(ground).draw(width, height, seed);
}

} // namespace tidalume::gallery
