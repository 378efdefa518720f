#include "effects/comet/CometRenderer.h"
#include "tests/pictures/PictureCase.h"

#include <GLES3/gl3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tidalume::pictures {
namespace {

constexpr double pi = 3.141592;
constexpr int columns = 100;
const Values background = {0.1, 0.2, 0.4, 0.5};

/// In pixels from the bottom-left corner.
struct Point {
    double x, y;
};

double cross(Point o, Point a, Point b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// A triangle whose alpha is linear between its corners.
struct Triangle {
    Point corners[3];
    double alphas[3];

    double alphaAt(Point p) const {
        const auto& [a, b, c] = corners;
        const double area = cross(a, b, c);
        if (area == 0.0 || p.y < std::min({a.y, b.y, c.y}) || p.y > std::max({a.y, b.y, c.y})) return 0.0;
        const double first = cross(b, c, p) / area;
        const double second = cross(c, a, p) / area;
        const double third = 1.0 - first - second;
        if (first < 0.0 || second < 0.0 || third <= 0.0) return 0.0;
        return first * alphas[0] + second * alphas[1] + third * alphas[2];
    }
};

/// Everything between two distances from a centre.
struct Annulus {
    Point centre;
    double inner, outer, alpha;

    double alphaAt(Point p) const {
        const double d = std::hypot(p.x - centre.x, p.y - centre.y);
        return d >= inner && d <= outer ? alpha : 0.0;
    }
};

/// A frame of a flight: white layers, of which each lets a share of what lies under it through.
class Frame {
  public:
    /// @param screenWidth  in pixels, of the screen that sizes cores and rings
    Frame(CometRenderer& comets, int width, int height, int screenWidth, double t) : mWidth(width), mHeight(height) {
        const double glow = 0.2 * std::sin(t * pi);
        for (int comet = 0; comet < 2; ++comet) {
            // The centre line of a mesh is the path up to t, and the whole path at 1.
            comets.updateMesh(1.0F);
            const auto ring = [&](int column, double start, double alpha, double growth) {
                const double radius = 0.5 * screenWidth * growth * (t - start);
                if (t <= start) return;
                mRound.push_back(
                    {vertex(comets, 2 * comet, 1, column), radius - 3.0, radius, alpha * (1.0 - t) / (1.0 - start)});
            };
            ring(25, 0.75, 0.5, 1.0 / 3.0);
            ring(15, 0.85, 0.3, 0.3 / 0.85);
            comets.updateMesh(static_cast<float>(t));
            const double core = 0.02 * screenWidth * (1.0 - std::pow(t, 2.5));
            mRound.push_back({vertex(comets, 2 * comet, 1, 10), 0.0, core, glow});
            addTail(comets, 2 * comet, glow);
            addTail(comets, 2 * comet + 1, glow);
        }
    }

    /// The share of the background that is left at a point.
    double through(Point p) const {
        double share = 1.0;
        for (const Triangle& triangle : mTails)
            share *= 1.0 - triangle.alphaAt(p);
        for (const Annulus& annulus : mRound)
            share *= 1.0 - annulus.alphaAt(p);
        return share;
    }

  private:
    Point vertex(CometRenderer& comets, int mesh, int row, int column) const {
        const float* v = comets.getVertices(mesh) + 3 * (row * (columns + 1) + column);
        return {(v[0] + 1.0) * 0.5 * mWidth, (v[2] + 1.0) * 0.5 * mHeight};
    }

    void addTail(CometRenderer& comets, int mesh, double glow) {
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < columns; ++column) {
                const Point left[2] = {vertex(comets, mesh, row, column), vertex(comets, mesh, row + 1, column)};
                const Point right[2] = {vertex(comets, mesh, row, column + 1),
                                        vertex(comets, mesh, row + 1, column + 1)};
                const double alpha = (1.0 - column / 100.0) * glow;
                const double next = (1.0 - (column + 1) / 100.0) * glow;
                mTails.push_back({{left[0], left[1], right[0]}, {alpha, alpha, next}});
                mTails.push_back({{left[1], right[1], right[0]}, {alpha, next, next}});
            }
        }
    }

    int mWidth;
    int mHeight;
    std::vector<Triangle> mTails;
    std::vector<Annulus> mRound;
};

/// A frame at progress t. The screen that sizes the cores and rings may be larger than the picture.
Comparison comets(int width, int height, int screenWidth, double t) {
    const int screenHeight = screenWidth * height / width;
    CometRenderer renderer;
    renderer.init();
    renderer.setScreenSize(screenWidth, screenHeight);
    srand48(4);
    renderer.push(0.5F * screenWidth, 0.45F * screenHeight, 0);
    glViewport(0, 0, width, height);
    glBlendEquation(GL_FUNC_ADD);
    glClearColor(background[0], background[1], background[2], background[3]);
    glClear(GL_COLOR_BUFFER_BIT);
    renderer.render(t);
    const headless::PixelArray drawn = headless::readFramebuffer(width, height);

    const Frame frame(renderer, width, height, screenWidth, t);
    return compare(drawn, [&](int column, int row) {
        const Point middle = {column + 0.5, row + 0.5};
        Values values = 1.0 - (1.0 - background) * frame.through(middle);
        // Where the picture is another a little further on, an outline passes: coverage there is the driver's choice.
        for (const auto& [x, y] : {Point{0.25, 0.0}, {-0.25, 0.0}, {0.0, 0.25}, {0.0, -0.25}}) {
            const Values further = 1.0 - (1.0 - background) * frame.through({middle.x + x, middle.y + y});
            values[abs(further - values) >= 0.01] = std::numeric_limits<double>::quiet_NaN();
        }
        return values;
    });
}

constexpr Tolerance tolerance = {
    0.012, "each of up to eight layers rounds to a step of 8 bits, and a quarter pixel changes less"};

} // namespace

PictureTable cometPictures() {
    return {
        {"comet_at_0_1_97x61", [] { return comets(97, 61, 97, 0.1); }, tolerance},
        {"comet_at_0_5_64x160", [] { return comets(64, 160, 64, 0.5); }, tolerance},
        {"comet_at_0_5_large_cores", [] { return comets(160, 160, 1600, 0.5); }, tolerance},
        {"comet_at_0_8_rings", [] { return comets(160, 160, 1600, 0.8); }, tolerance},
        {"comet_at_0_9_two_pairs_of_rings", [] { return comets(160, 160, 1600, 0.9); }, tolerance},
    };
}

} // namespace tidalume::pictures
