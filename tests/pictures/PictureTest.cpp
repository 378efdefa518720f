#include "tests/pictures/PictureCase.h"
#include "tests/support/GLTest.h"

#include <iostream>

namespace tidalume::pictures {

void PrintTo(const PictureCase& picture, std::ostream* stream) {
    *stream << picture.name;
}

namespace {

using namespace testing;

class PictureTest : public GLTest, public WithParamInterface<PictureCase> {};

TEST_P(PictureTest, MatchesFormula) {
    context.resize(160, 160);
    const auto [largest, x, y, drawn, expected] = GetParam().run();
    EXPECT_THAT(log.take(), Each(StartsWith("2 ")));
    std::cout << GetParam().name << ": largest difference " << largest << "\n";
    EXPECT_LE(largest, toleranceHere(GetParam())) << drawn << " instead of " << expected << " at (" << x << ", " << y
                                                  << "); tolerance: " << GetParam().tolerance.reason;
    context.recreate(); // the textures of the pictures live as long as the context
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, ValuesIn(allPictures), PrintToStringParamName());

} // namespace
} // namespace tidalume::pictures
