#pragma once

#include "headless/Pixels.h"

#include <functional>
#include <valarray>
#include <vector>

/// Pictures that the driver draws, compared with their formulas value by value.
///
/// Free of the test framework, of the recorder and of EGL, so that a page in a browser can go through the same tables.
namespace tidalume::pictures {

/// A drawn picture and what its formula gives.
struct Comparison {
    int width;
    int height;
    int channels;                 ///< values per pixel in both arrays, 1 to 4
    std::vector<float> drawn;     ///< rows from the bottom
    std::vector<double> expected; ///< NaN where the formula leaves it open, as on the very edge of a disc
};

/// The channels of a pixel as a formula gives them; NaN leaves one open.
using Values = std::valarray<double>;

/// Sets pixels as they were drawn beside their formula.
/// @param formula  values of the pixel in column x of row y, row 0 at the bottom; as many for each pixel
Comparison compare(const headless::PixelArray& drawn, const std::function<Values(int x, int y)>& formula);

/// How far from its formula a value may be.
struct Tolerance {
    double value;
    const char* reason; ///< where it comes from
    /// The tolerance where the driver's gl_PointCoord is off by an eighth of a pixel, as softpipe's is. 0: the same.
    double coarsePoints = 0.0;
};

/// One picture.
struct PictureCase {
    const char* name;
    Comparison (*run)(); ///< draws with the current context, whose framebuffer 0 is at least 160 x 160 pixels
    Tolerance tolerance;
    /// What a value changes by where a corner of the drawing moves by a pixel; 0 where all corners lie on whole pixels.
    double slope = 0.0;
};

using PictureTable = std::vector<PictureCase>;

/// The largest difference, and where it is.
struct Difference {
    double largest; ///< NaN when a value is not a number where the formula gives one
    int x;
    int y;
    int channel;
    int compared; ///< number of values that the formula gives
};

Difference difference(const Comparison& comparison);

/// How far from its formula a picture may be on the driver of the current context.
double toleranceHere(const PictureCase& picture);

PictureTable metaballPictures();
PictureTable vectorPictures();
PictureTable cometPictures();
PictureTable waterPictures();

/// All tables, in the order of the effects.
PictureTable allPictures();

} // namespace tidalume::pictures
