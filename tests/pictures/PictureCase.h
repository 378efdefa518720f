#pragma once

#include "headless/Pixels.h"
#include "reference/Values.h"

#include <functional>
#include <limits>
#include <vector>

/// Pictures that the driver draws, compared with their formulas value by value.
///
/// Free of the test framework, of the recorder and of EGL, so that a page in a browser can go through the same tables.
namespace tidalume::pictures {

namespace plain = reference::plain;
using plain::Values;

/// The value of a channel that a formula leaves open.
constexpr double open = std::numeric_limits<double>::quiet_NaN();

/// The largest difference between what was drawn and its formula, and where it is.
struct Comparison {
    double largest; ///< infinite where a number is missing, or where the formula leaves half of the pixels open
    int x, y;
    double drawn, expected;
};

/// Sets pixels beside their formula.
/// @param formula  values of the pixel in column x of row y, row 0 at the bottom
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
};

/// How far from its formula a picture may be on the driver of the current context.
double toleranceHere(const PictureCase& picture);

inline std::vector<PictureCase> allPictures;

/// Adds its pictures to all: every file with pictures has one.
struct PictureTable {
    explicit PictureTable(const std::vector<PictureCase>& pictures) {
        allPictures.insert(allPictures.end(), pictures.begin(), pictures.end());
    }
};

} // namespace tidalume::pictures
