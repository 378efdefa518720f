#include "tests/pictures/PictureCase.h"
#include "tests/support/GLTest.h"

#include <android/log.h>

#include <iostream>

namespace tidalume::pictures {

void PrintTo(const PictureCase& picture, std::ostream* stream) {
    *stream << picture.name;
}

namespace {

class PictureTest : public GLTest, public testing::WithParamInterface<PictureCase> {};

TEST_P(PictureTest, MatchesFormula) {
    const PictureCase& picture = GetParam();
    context.resize(160, 160);
    const double tolerance = toleranceHere(picture);
    const Comparison found = picture.run();
    for (const LogLine& line : log.take())
        EXPECT_EQ(line.priority, ANDROID_LOG_VERBOSE) << line;

    std::cout << picture.name << ": largest difference " << found.largest << "\n";
    EXPECT_LE(found.largest, tolerance) << found.drawn << " instead of " << found.expected << " at (" << found.x << ", "
                                        << found.y << "), channel " << found.channel
                                        << "; tolerance: " << picture.tolerance.reason;
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, testing::ValuesIn(allPictures()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace tidalume::pictures
