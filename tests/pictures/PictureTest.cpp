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

/// The drawn picture, its formula and their difference, 10 times enlarged, side by side in a PNG file, as grey or
/// colour, values beyond 0 to 1 clipped. Returns where it is.
std::string writePicture(const std::string& name, const Comparison& comparison) {
    Picture picture(3 * comparison.width, comparison.height);
    std::fill(picture.rgba.begin(), picture.rgba.end(), std::uint8_t{255});
    const int channels = comparison.channels;
    for (int i = 0; i < comparison.width * comparison.height * 3; ++i) {
        const int pixel = i / 3;
        const auto value = static_cast<size_t>(pixel * channels + i % 3 % channels);
        const double drawn = comparison.drawn[value];
        const double expected = comparison.expected[value];
        const double panels[3] = {drawn, expected, 10.0 * std::fabs(expected - drawn)};
        for (int panel = 0; panel < 3; ++panel) {
            const int x = panel * comparison.width + pixel % comparison.width;
            picture.pixel(x, comparison.height - 1 - pixel / comparison.width)[i % 3] =
                static_cast<std::uint8_t>(255.0 * std::fmin(std::fmax(panels[panel], 0.0), 1.0) + 0.5);
        }
    }
    const std::string path = testing::TempDir() + name + ".png";
    headless::writePng(path, picture);
    return path;
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
    EXPECT_GT(found.compared, comparison.width * comparison.height / 2)
        << "the formula leaves most of the picture open";
    EXPECT_LE(found.largest, tolerance) << "at (" << found.x << ", " << found.y << "), channel " << found.channel
                                        << "; tolerance: " << picture.tolerance.reason << "; see "
                                        << writePicture(picture.name, comparison);
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, testing::ValuesIn(allPictures()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace tidalume::pictures
