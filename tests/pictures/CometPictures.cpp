#include "effects/comet/CometRenderer.h"
#include "headless/Pixels.h"
#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tidalume::pictures {
namespace {

constexpr double pi = 3.141592;
constexpr int columns = 100;
constexpr double background[4] = {0.1, 0.2, 0.4, 0.5};

/// Pixels, from the bottom-left corner.
struct Point {
    double x;
    double y;
};

/// White over what is there, at sample points that are shifted against the pixels' centres.
class Canvas {
  public:
    Canvas(int width, int height, Point shift) : mWidth(width), mHeight(height), mShift(shift) {
        for (int i = 0; i < width * height; ++i)
            values.insert(values.end(), std::begin(background), std::end(background));
    }

    Point toPixels(double x, double y) const { return {(x + 1.0) * 0.5 * mWidth, (y + 1.0) * 0.5 * mHeight}; }

    /// A triangle whose alpha is linear between its corners.
    void triangle(const Point (&p)[3], const double (&alpha)[3]) {
        const double area = cross(p[0], p[1], p[2]);
        if (area == 0.0) return;
        const auto [left, right] = std::minmax({p[0].x, p[1].x, p[2].x});
        const auto [bottom, top] = std::minmax({p[0].y, p[1].y, p[2].y});
        visit(left, right, bottom, top, [&](Point sample) {
            const double a = cross(p[1], p[2], sample) / area;
            const double b = cross(p[2], p[0], sample) / area;
            const double c = 1.0 - a - b;
            return a >= 0.0 && b >= 0.0 && c > 0.0 ? a * alpha[0] + b * alpha[1] + c * alpha[2] : 0.0;
        });
    }

    /// Everything between two distances from a centre.
    void annulus(Point centre, double inner, double outer, double alpha) {
        visit(centre.x - outer, centre.x + outer, centre.y - outer, centre.y + outer, [&](Point sample) {
            const double d = std::hypot(sample.x - centre.x, sample.y - centre.y);
            return d >= inner && d <= outer ? alpha : 0.0;
        });
    }

    std::vector<double> values;

  private:
    static double cross(Point o, Point a, Point b) { return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x); }

    template <typename Alpha>
    void visit(double left, double right, double bottom, double top, Alpha alphaAt) {
        for (int y = std::max(0, static_cast<int>(bottom) - 1); y < std::min(mHeight, static_cast<int>(top) + 2); ++y) {
            for (int x = std::max(0, static_cast<int>(left) - 1); x < std::min(mWidth, static_cast<int>(right) + 2);
                 ++x) {
                const double alpha = alphaAt({x + 0.5 + mShift.x, y + 0.5 + mShift.y});
                double* value = &values[static_cast<size_t>(y * mWidth + x) * 4];
                for (int c = 0; c < 4; ++c)
                    value[c] = alpha + value[c] * (1.0 - alpha);
            }
        }
    }

    int mWidth;
    int mHeight;
    Point mShift;
};

/// The comets' meshes, and points of their paths, which are the centre lines of the meshes.
struct Flight {
    std::vector<float> meshes[4];
    Point base[2];     ///< path at 0.9 t
    Point rings[2][2]; ///< path of each comet at 0.75 and 0.85
};

const float* vertexOf(const float* mesh, int row, int column) {
    return mesh + 3 * (row * (columns + 1) + column);
}

Point centreOf(CometRenderer& comets, int comet, int column) {
    const float* vertex = vertexOf(comets.getVertices(2 * comet), 1, column);
    return {vertex[0], vertex[2]};
}

Flight flightOf(CometRenderer& comets, float t) {
    Flight flight;
    comets.updateMesh(1.0F);
    for (int comet = 0; comet < 2; ++comet) {
        flight.rings[comet][0] = centreOf(comets, comet, 25);
        flight.rings[comet][1] = centreOf(comets, comet, 15);
    }
    comets.updateMesh(t);
    for (int mesh = 0; mesh < 4; ++mesh)
        flight.meshes[mesh].assign(comets.getVertices(mesh), comets.getVertices(mesh) + 3 * 3 * (columns + 1));
    for (int comet = 0; comet < 2; ++comet)
        flight.base[comet] = centreOf(comets, comet, 10);
    return flight;
}

void drawTail(Canvas& canvas, const std::vector<float>& mesh, double t) {
    const auto corner = [&](int row, int column) {
        const float* vertex = vertexOf(mesh.data(), row, column);
        return canvas.toPixels(vertex[0], vertex[2]);
    };
    const auto alpha = [&](int column) { return (1.0 - column / 100.0) * 0.2 * std::sin(t * pi); };
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < columns; ++column) {
            canvas.triangle({corner(row, column), corner(row + 1, column), corner(row, column + 1)},
                            {alpha(column), alpha(column), alpha(column + 1)});
            canvas.triangle({corner(row + 1, column), corner(row + 1, column + 1), corner(row, column + 1)},
                            {alpha(column), alpha(column + 1), alpha(column + 1)});
        }
    }
}

std::vector<double> frame(const Flight& flight, int width, int height, int screenWidth, double t, Point shift) {
    Canvas canvas(width, height, shift);
    const auto at = [&](Point p) { return canvas.toPixels(p.x, p.y); };
    for (const std::vector<float>& mesh : flight.meshes)
        drawTail(canvas, mesh, t);
    for (const Point& base : flight.base)
        canvas.annulus(at(base), 0.0, 0.02 * screenWidth * (1.0 - std::pow(t, 2.5)), 0.2 * std::sin(t * pi));
    const double starts[2] = {0.75, 0.85};
    const double alphas[2] = {0.5, 0.3};
    const double growths[2] = {1.0 / 3.0, 0.3 / 0.85};
    for (int pair = 0; pair < 2; ++pair) {
        if (t <= starts[pair]) continue;
        const double radius = 0.5 * screenWidth * growths[pair] * (t - starts[pair]);
        for (int comet = 0; comet < 2; ++comet)
            canvas.annulus(at(flight.rings[comet][pair]), radius - 3.0, radius,
                           alphas[pair] * (1.0 - t) / (1.0 - starts[pair]));
    }
    return canvas.values;
}

/// A frame of a flight at progress t. The screen that sizes the cores and rings may be larger than the picture.
Comparison comets(int width, int height, int screenWidth, double t) {
    CometRenderer renderer;
    renderer.init();
    renderer.setScreenSize(screenWidth, screenWidth * height / width);
    srand48(4);
    renderer.push(0.5F * static_cast<float>(screenWidth), 0.45F * static_cast<float>(screenWidth * height / width), 0);
    glViewport(0, 0, width, height);
    glBlendEquation(GL_FUNC_ADD);
    glClearColor(0.1F, 0.2F, 0.4F, 0.5F);
    glClear(GL_COLOR_BUFFER_BIT);
    renderer.render(t);
    Comparison comparison = {width, height, 4, headless::readFramebuffer(width, height).rgba, {}};

    // Where the picture is another a little further on, an outline passes: coverage there is the driver's choice.
    const Flight flight = flightOf(renderer, static_cast<float>(t));
    comparison.expected = frame(flight, width, height, screenWidth, t, {0.0, 0.0});
    for (const Point shift : {Point{0.25, 0.0}, {-0.25, 0.0}, {0.0, 0.25}, {0.0, -0.25}}) {
        const std::vector<double> shifted = frame(flight, width, height, screenWidth, t, shift);
        for (size_t i = 0; i < shifted.size(); ++i) {
            if (!(std::fabs(shifted[i] - comparison.expected[i]) < 0.01))
                comparison.expected[i] = std::numeric_limits<double>::quiet_NaN();
        }
    }
    return comparison;
}

constexpr Tolerance tolerance = {
    0.012, "each of up to eight layers rounds to a step of 8 bits, and a quarter pixel changes less"};

} // namespace

const PictureTable& cometPictures() {
    static const PictureTable table = {
        {"comet_at_0_1_97x61", [] { return comets(97, 61, 97, 0.1); }, tolerance},
        {"comet_at_0_5_64x160", [] { return comets(64, 160, 64, 0.5); }, tolerance},
        {"comet_at_0_5_large_cores", [] { return comets(160, 160, 1600, 0.5); }, tolerance},
        {"comet_at_0_8_rings", [] { return comets(160, 160, 1600, 0.8); }, tolerance},
        {"comet_at_0_9_two_pairs_of_rings", [] { return comets(160, 160, 1600, 0.9); }, tolerance},
    };
    return table;
}

} // namespace tidalume::pictures
