#include "gallery/Ground.h"

#include "gallery/Background.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gmock/gmock.h>
#include <set>

namespace tidalume::gallery {

namespace {

using namespace testing;

/// In steps of 8 bits.
double meanDifference(const Picture& one, const Picture& other) {
    double sum = 0;
    for (std::size_t i = 0; i < one.rgba.size(); ++i)
        sum += std::abs(one.rgba[i] - other.rgba[i]);
    return sum / static_cast<double>(one.rgba.size());
}

/// The luminance's standard deviation over its mean in squares of that side, in ascending order.
std::vector<double> localContrasts(const Picture& picture, int side) {
    std::vector<double> contrasts;
    for (int top = 0; top + side <= picture.height; top += side) {
        for (int left = 0; left + side <= picture.width; left += side) {
            double sum = 0;
            double squares = 0;
            for (int i = 0; i < side * side; ++i) {
                const std::uint8_t* pixel = picture.pixel(left + i % side, top + i / side);
                const double luminance = 0.2126 * pixel[0] + 0.7152 * pixel[1] + 0.0722 * pixel[2];
                sum += luminance;
                squares += luminance * luminance;
            }
            contrasts.push_back(std::sqrt(std::max(0.0, squares * side * side / (sum * sum) - 1)));
        }
    }
    std::sort(contrasts.begin(), contrasts.end());
    return contrasts;
}

} // namespace

TEST(Grounds, AreOneOpaquePictureEachAtEverySize) {
    std::set<std::vector<std::uint8_t>> pictures;
    std::vector<std::string> withChance;
    for (const Ground& ground : groundTable()) {
        for (const auto& [width, height] : {std::pair(1, 1), {1, 97}, {4096, 3}, {67, 45}}) {
            const Picture picture = ground.draw(width, height, 7);
            ASSERT_EQ(std::pair(picture.width, picture.height), std::pair(width, height)) << ground.name;
            for (std::size_t i = 3; i < picture.rgba.size(); i += 4)
                ASSERT_EQ(picture.rgba[i], 255) << ground.name;
        }
        const Picture small = ground.draw(90, 160, 1);
        EXPECT_LT(meanDifference(small, coverFit(ground.draw(360, 640, 1), 90, 160)), 1.5) << ground.name;
        EXPECT_EQ(ground.draw(90, 160, 1).rgba, small.rgba) << ground.name;
        if (ground.draw(90, 160, 2).rgba != small.rgba) withChance.emplace_back(ground.name);
        pictures.insert(small.rgba);
    }
    EXPECT_EQ(pictures.size(), groundTable().size());
    EXPECT_THAT(withChance, ElementsAre("sand", "tiles", "pebbles", "night"));
}

// A ring over the sand is 10 pixels wide where the picture is 200 wide, and raises the contrast there above 0.12. A
// quarter of the picture may hold outlines of stones.
TEST(Grounds, LetRingsBeRead) {
    for (const char* name : {"sand", "tiles", "sunset", "teal", "pebbles"}) {
        const std::vector<double> contrasts = localContrasts(groundNamed(name).draw(200, 356, 1), 10);
        EXPECT_LT(contrasts[contrasts.size() * 3 / 4], 0.05) << name;
    }
}

} // namespace tidalume::gallery
