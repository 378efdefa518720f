#include "gallery/Ground.h"

#include "gallery/Background.h"
#include "tests/support/Pictures.h"

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
        EXPECT_EQ(difference(ground.draw(90, 160, 1), small), "") << ground.name;
        if (ground.draw(90, 160, 2).rgba != small.rgba) withChance.emplace_back(ground.name);
        pictures.insert(small.rgba);
    }
    EXPECT_EQ(pictures.size(), groundTable().size());
    EXPECT_THAT(withChance, ElementsAre("sand", "tiles", "pebbles", "night"));
}

} // namespace tidalume::gallery
