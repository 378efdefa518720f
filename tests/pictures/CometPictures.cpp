#include "effects/comet/CometRenderer.h"
#include "tests/pictures/PictureCase.h"

#include <cmath>
#include <cstdlib>

namespace tidalume::pictures {
namespace {

const Values background = {0.1, 0.2, 0.4, 0.5};

/// In pixels from the bottom-left corner, and how white it is there.
struct Point {
    double x, y, alpha = 0.0;
};

double cross(const Point& o, const Point& a, const Point& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// The alpha of something white at a point.
using Layer = std::function<double(const Point&)>;

/// A triangle whose alpha is linear between its corners.
Layer triangle(const Point& a, const Point& b, const Point& c) {
    return [=, area = cross(a, b, c)](const Point& p) {
        const double first = cross(b, c, p) / area, second = cross(c, a, p) / area, third = 1.0 - first - second;
        const bool inside = first >= 0.0 && second >= 0.0 && third > 0.0;
        return inside ? first * a.alpha + second * b.alpha + third * c.alpha : 0.0;
    };
}

/// Everything between two distances from a centre.
Layer annulus(const Point& centre, double inner, double outer, double alpha) {
    return [=](const Point& p) {
        const double d = std::hypot(p.x - centre.x, p.y - centre.y);
        return d >= inner && d <= outer ? alpha : 0.0;
    };
}

/// A frame at progress t, and what it consists of by the comets' meshes.
/// @param screenWidth  in pixels, of the screen that sizes the cores and rings: it may be larger than the picture
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

    std::vector<Layer> layers;
    const double glow = 0.2 * std::sin(t * 3.141592);
    const auto vertex = [&](int mesh, int row, int column) -> Point {
        const float* v = renderer.getVertices(mesh) + 3 * (row * 101 + column);
        return {(v[0] + 1.0) * 0.5 * width, (v[2] + 1.0) * 0.5 * height, (1.0 - column / 100.0) * glow};
    };
    for (int strip = 0; strip < 8; ++strip) {
        const auto corner = [&](int i) { return vertex(strip / 2, strip % 2 + i % 2, i / 2); };
        for (int i = 0; i < 200; ++i)
            layers.push_back(triangle(corner(i), corner(i + 1), corner(i + 2)));
    }
    for (const int mesh : {0, 2})
        layers.push_back(annulus(vertex(mesh, 1, 10), 0.0, 0.02 * screenWidth * (1.0 - std::pow(t, 2.5)), glow));
    renderer.updateMesh(1.0F); // its centre line is the whole path
    for (const auto& [column, radius] : {std::pair(25, (t - 0.75) / 6.0), {15, (t - 0.85) * 0.15 / 0.85}}) {
        for (const int mesh : {0, 2})
            layers.push_back(
                annulus(vertex(mesh, 1, column), screenWidth * radius - 3.0, screenWidth * radius, 2.0 * (1.0 - t)));
    }

    const auto colorAt = [&](double x, double y) -> Values {
        double through = 1.0;
        for (const Layer& layer : layers)
            through *= 1.0 - layer({x, y});
        return 1.0 - (1.0 - background) * through;
    };
    return compare(drawn, [&](int column, int row) {
        Values color = colorAt(column + 0.5, row + 0.5);
        // Where the picture is another a little further on, an outline passes: coverage there is the driver's choice.
        for (const auto& [x, y] : {std::pair(0.25, 0.5), {0.75, 0.5}, {0.5, 0.25}, {0.5, 0.75}})
            color[abs(colorAt(column + x, row + y) - color) >= 0.01] = open;
        return color;
    });
}

constexpr Tolerance tolerance = {
    0.012, "each of up to eight layers rounds to a step of 8 bits, and a quarter pixel changes less"};

const PictureTable table({
    {"comet_at_0_1_97x61", [] { return comets(97, 61, 97, 0.1); }, tolerance},
    {"comet_at_0_5_64x160", [] { return comets(64, 160, 640, 0.5); }, tolerance},
    {"comet_at_0_9_rings", [] { return comets(160, 160, 1600, 0.9); }, tolerance},
});

} // namespace

} // namespace tidalume::pictures
