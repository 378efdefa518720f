#include "effects/comet/CometRenderer.h"
#include "reference/Comets.h"
#include "tests/pictures/PictureCase.h"

#include <cstdlib>

namespace tidalume::pictures {
namespace {

const Values background = {0.1, 0.2, 0.4, 0.5};

using plain::Point;

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

    std::vector<plain::Layer> layers;
    const double glow = plain::glow(t);
    const auto vertex = [&](int mesh, int row, int column) -> Point {
        const float* v = renderer.getVertices(mesh) + 3 * (row * 101 + column);
        return {(v[0] + 1.0) * 0.5 * width, (v[2] + 1.0) * 0.5 * height, (1.0 - column / 100.0) * glow};
    };
    for (int strip = 0; strip < 8; ++strip) {
        const auto corner = [&](int i) { return vertex(strip / 2, strip % 2 + i % 2, i / 2); };
        for (int i = 0; i < 200; ++i)
            layers.push_back(plain::triangle(corner(i), corner(i + 1), corner(i + 2)));
    }
    for (const int mesh : {0, 2})
        layers.push_back(plain::annulus(vertex(mesh, 1, 10), 0.0, screenWidth * plain::coreRadius(t), glow));
    renderer.updateMesh(1.0F); // its centre line is the whole path
    for (const auto& [column, share] : plain::rings(t)) {
        const double radius = screenWidth * share;
        for (const int mesh : {0, 2})
            layers.push_back(plain::annulus(vertex(mesh, 1, column), radius - 3.0, radius, plain::ringAlpha(t)));
    }

    const auto colorAt = [&](double x, double y) -> Values {
        return 1.0 - (1.0 - background) * plain::transparency(layers, {x, y});
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
