#include "gallery/scenes/VectorBitmaps.h"

#include "gallery/Color.h"
#include "gallery/Math.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace tidalume::gallery {

namespace {

struct Point {
    float x;
    float y;
};

// Signed distances, below 0 inside. The corners of the convex polygon go clockwise on the screen.
float distanceToPolygon(std::initializer_list<Point> corners, Point p) {
    float distance = -1e9F;
    Point a = *(corners.end() - 1);
    for (const Point& b : corners) {
        const float dx = b.x - a.x;
        const float dy = b.y - a.y;
        distance = std::max(distance, ((p.x - a.x) * dy - (p.y - a.y) * dx) / std::hypot(dx, dy));
        a = b;
    }
    return distance;
}

float distanceToDisc(Point center, float radius, Point p) {
    return std::hypot(p.x - center.x, p.y - center.y) - radius;
}

float distanceToRoundedSquare(float radius, Point p) {
    const float x = std::max(std::fabs(p.x - 0.5F) - 0.5F + radius, 0.0F);
    const float y = std::max(std::fabs(p.y - 0.5F) - 0.5F + radius, 0.0F);
    return std::hypot(x, y) - radius;
}

// Paints one pixel, shape over shape, with edges one pixel soft.
struct Painter {
    Color color;
    float pixelsPerUnit = 1;

    void paint(float distance, const Color& over) {
        color = mix(color, over, std::clamp(0.5F - distance * pixelsPerUnit, 0.0F, 1.0F));
    }
};

} // namespace

Picture boatTile(int size) {
    const auto pixels = static_cast<float>(size);
    Picture tile(size, size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const Point p = {(static_cast<float>(x) + 0.5F) / pixels, (static_cast<float>(y) + 0.5F) / pixels};
            Painter at = {mix({0.36F, 0.66F, 0.86F}, {0.99F, 0.90F, 0.72F}, smoothstep(0.0F, 0.7F, p.y)), pixels};
            at.paint(distanceToDisc({0.22F, 0.23F}, 0.105F, p), {1.00F, 0.72F, 0.25F});
            at.paint(distanceToPolygon({{0.485F, 0.13F}, {0.515F, 0.13F}, {0.515F, 0.66F}, {0.485F, 0.66F}}, p),
                     {0.35F, 0.22F, 0.18F});
            at.paint(distanceToPolygon({{0.515F, 0.09F}, {0.68F, 0.135F}, {0.515F, 0.18F}}, p), {0.88F, 0.22F, 0.28F});
            at.paint(distanceToPolygon({{0.54F, 0.20F}, {0.84F, 0.60F}, {0.54F, 0.60F}}, p), {1.00F, 0.98F, 0.94F});
            at.paint(distanceToPolygon({{0.46F, 0.30F}, {0.46F, 0.60F}, {0.26F, 0.60F}}, p), {0.96F, 0.56F, 0.42F});
            at.paint(distanceToPolygon({{0.18F, 0.65F}, {0.88F, 0.65F}, {0.74F, 0.81F}, {0.30F, 0.81F}}, p),
                     {0.55F, 0.16F, 0.22F});
            at.paint(0.76F + 0.018F * std::sin(p.x * 22.0F) - p.y, {0.10F, 0.45F, 0.62F});
            at.paint(0.86F + 0.018F * std::sin(p.x * 22.0F + 2.0F) - p.y, {0.06F, 0.32F, 0.50F});
            at.color.alpha = std::clamp(0.5F - distanceToRoundedSquare(0.12F, p) * pixels, 0.0F, 1.0F);
            setPixel(tile, x, y, at.color);
        }
    }
    return tile;
}

Picture coast(int height) {
    struct Ridge {
        float top = 0;    // of its middle, as a fraction of the height
        float height = 0; // of its waves
        float length = 0, phase = 0;
        Color color;
    };
    static constexpr Ridge ridges[] = {
        {0.52F, 0.070F, 3.1F, 0.3F, {0.62F, 0.42F, 0.55F}},
        {0.60F, 0.075F, 4.3F, 2.0F, {0.40F, 0.30F, 0.50F}},
        {0.84F, 0.050F, 5.2F, 4.4F, {0.20F, 0.17F, 0.36F}},
        {0.93F, 0.035F, 7.9F, 1.2F, {0.10F, 0.09F, 0.23F}},
    };
    const auto pixels = static_cast<float>(height);
    Picture picture(2 * height, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < 2 * height; ++x) {
            const Point p = {(static_cast<float>(x) + 0.5F) / pixels, (static_cast<float>(y) + 0.5F) / pixels};
            const float glow = std::exp(-3.0F * std::hypot(p.x - 1.15F, p.y - 0.42F));
            const Color sky = mix({0.22F, 0.30F, 0.58F}, {0.99F, 0.66F, 0.46F}, smoothstep(0.0F, 0.6F, p.y));
            Painter at = {mix(sky, {1.00F, 0.90F, 0.62F}, glow), pixels};
            at.paint(distanceToDisc({1.15F, 0.42F}, 0.085F, p), {1.00F, 0.96F, 0.80F});
            for (const Ridge& ridge : ridges) {
                const float wave = std::sin(p.x * ridge.length + ridge.phase) +
                                   0.4F * std::sin(p.x * ridge.length * 2.7F + 2.0F * ridge.phase);
                at.paint(ridge.top + ridge.height * wave - p.y, ridge.color);
                if (&ridge != &ridges[1]) continue;
                // The sea lies between the far hills and the near ones, and the sun glitters on it.
                const float ripple = std::sin(p.y * 260.0F + 3.0F * std::sin(p.x * 31.0F));
                const float glitter = smoothstep(0.2F, 1.0F, ripple) * std::exp(-9.0F * std::fabs(p.x - 1.15F));
                at.paint(0.66F - p.y, mix({0.28F, 0.36F, 0.60F}, {1.00F, 0.84F, 0.62F}, 0.25F + 0.75F * glitter));
            }
            setPixel(picture, x, y, at.color);
        }
    }
    return picture;
}

Picture windowMask(int width, int height, float x, float y, float radius) {
    constexpr float pearls = 36.0F;
    Picture mask(width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const float dx = static_cast<float>(column) + 0.5F - x;
            const float dy = static_cast<float>(row) + 0.5F - y;
            const float distance = std::hypot(dx, dy);
            const float angle = std::atan2(dy, dx);
            const float rim = radius * (1.0F + 0.02F * std::cos(pearls * angle));
            const float nearest = std::round(angle * pearls / (twoPi)) * twoPi / pearls;
            const float pearl =
                std::hypot(dx - 1.1F * radius * std::cos(nearest), dy - 1.1F * radius * std::sin(nearest));
            const float shown = std::max(std::clamp(0.5F + rim - distance, 0.0F, 1.0F),
                                         std::clamp(0.5F + 0.035F * radius - pearl, 0.0F, 1.0F));
            setPixel(mask, column, row, {shown, shown, shown});
        }
    }
    return mask;
}

} // namespace tidalume::gallery
