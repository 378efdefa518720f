#include "headless/Picture.h"

#include "headless/PictureFile.h"
#include "tests/pictures/PictureCase.h"
#include "tests/support/GLTest.h"

#include <android/log.h>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace tidalume::pictures {

void PrintTo(const PictureCase& picture, std::ostream* stream) {
    *stream << picture.name;
}

namespace {

class PictureTest : public GLTest, public testing::WithParamInterface<PictureCase> {
  protected:
    void SetUp() override { context.resize(160, 160); }
};

/// Values from 0 to 1 as grey or colour, anything else clipped.
template <typename Value>
void write(const std::string& path, const Comparison& comparison, const std::vector<Value>& values) {
    Picture picture(comparison.width, comparison.height);
    for (int y = 0; y < comparison.height; ++y) {
        for (int x = 0; x < comparison.width; ++x) {
            std::uint8_t* pixel = picture.pixel(x, comparison.height - 1 - y);
            for (int c = 0; c < 3; ++c) {
                const auto first = static_cast<size_t>((y * comparison.width + x) * comparison.channels);
                const auto value = static_cast<double>(values[first + static_cast<size_t>(c % comparison.channels)]);
                pixel[c] = static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
            }
            pixel[3] = 255;
        }
    }
    headless::writePng(path, picture);
}

/// The drawn picture, its formula and their difference, 10 times enlarged, as PNG files. Returns where they are.
std::string writePictures(const std::string& name, const Comparison& comparison) {
    const std::string path = testing::TempDir() + name;
    std::vector<double> enlarged(comparison.drawn.size());
    for (size_t i = 0; i < enlarged.size(); ++i) {
        enlarged[i] = 10.0 * std::fabs(comparison.expected[i] - static_cast<double>(comparison.drawn[i]));
    }
    write(path + "-drawn.png", comparison, comparison.drawn);
    write(path + "-expected.png", comparison, comparison.expected);
    write(path + "-difference.png", comparison, enlarged);
    return path + "-*.png";
}

TEST_P(PictureTest, MatchesFormula) {
    const PictureCase& picture = GetParam();
    const double tolerance = toleranceHere(picture);
    const Comparison comparison = picture.run();
    for (const LogLine& line : log.take())
        EXPECT_EQ(line.priority, ANDROID_LOG_VERBOSE) << line;
    const Difference found = difference(comparison);

    RecordProperty("difference", std::to_string(found.largest));
    std::cout << picture.name << ": largest difference " << found.largest << "\n";
    ASSERT_EQ(comparison.drawn.size(), comparison.expected.size());
    EXPECT_GT(found.compared, comparison.width * comparison.height / 2)
        << "the formula leaves most of the picture open";
    EXPECT_LE(found.largest, tolerance) << "at (" << found.x << ", " << found.y << "), channel " << found.channel
                                        << "; tolerance: " << picture.tolerance.reason << "; see "
                                        << writePictures(picture.name, comparison);
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, testing::ValuesIn(allPictures()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace tidalume::pictures
