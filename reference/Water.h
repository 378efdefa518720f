#pragma once

#include "reference/Values.h"

/// Passes over height fields, of one texel each. Heights are in the first channel, velocities in the second.
namespace tidalume::reference::plain {

/// A half wave that falls from its strength at distance 0 to 0 at the radius.
inline double bump(double distance, double radius, double strength) {
    return (std::cos(std::min(1.0, distance / radius) * pi) * 0.5 + 0.5) * strength;
}

/// A disturbance with round ends, in pixels from the top-left corner.
struct Line {
    float begin[2], end[2], radius, strength;

    /// What it adds at a point.
    double at(double x, double y) const {
        const double dx = end[0] - begin[0], dy = end[1] - begin[1];
        const double along = (x - begin[0]) * dx + (y - begin[1]) * dy;
        const double t = dx == 0.0 && dy == 0.0 ? 0.0 : std::clamp(along / (dx * dx + dy * dy), 0.0, 1.0);
        return bump(std::hypot(x - begin[0] - t * dx, y - begin[1] - t * dy), radius, strength);
    }

    /// Whether a point lies in the rectangle that is painted.
    bool reaches(double x, double y) const {
        return x > std::min(begin[0], end[0]) - radius && x < std::max(begin[0], end[0]) + radius &&
               y > std::min(begin[1], end[1]) - radius && y < std::max(begin[1], end[1]) + radius;
    }
};

/// The same along a wave, on a screen of a width.
struct HorizontalWave {
    int width;
    float center, radius, strength, waveRadius, waveCount;

    double at(double x, double y) const {
        const double curve = center + std::sin(x / width * pi * 2.0 * waveCount) * waveRadius;
        return bump(std::fabs(curve - y), radius, strength);
    }

    bool reaches(double, double y) const { return std::fabs(y - center) < waveRadius + radius; }
};

/// A pass of ShallowWaterIterative.
inline Values iterativePass(const Texels& old, int x, int y) {
    const double v = (old.at(x, y, 1) + (old.neighbours(x, y) * 0.25 - old.at(x, y)) * 2.0) * 0.99;
    return {old.at(x, y) + v - (v == 0.0 ? 0.0 : std::copysign(0.00001, v)), v};
}

// The pond, whose y runs upwards.

inline double pondDrop(const Texels& state, const Line& drop, int x, int y) {
    return std::pow(state.at(x, y), 2.0) + std::pow(drop.at(x + 0.5, y + 0.5), 2.0);
}

/// @param line  ends and radius in normalised device coordinates
inline double pondLine(const Texels& state, const Line& line, int x, int y) {
    double sum = state.at(x, y);
    for (const float* end : {line.begin, line.end}) {
        const double dx = (x + 0.5) / state.width - (end[0] * 0.5 + 0.5);
        const double dy = (y + 0.5) / state.height - (end[1] * 0.5 + 0.5);
        sum += bump(std::hypot(dx, dy), line.radius * 0.5, line.strength * 0.4);
    }
    return std::min<double>(sum, line.strength);
}

struct Physics {
    double waveSpeed, viscosity, gridSpacing, timeStep;
};

inline double pondStep(const Texels& newer, const Texels& older, const Physics& physics, int x, int y) {
    const auto& [waveSpeed, viscosity, gridSpacing, timeStep] = physics;
    const double k = std::pow(timeStep * waveSpeed / gridSpacing, 2.0);
    const double q = 1.0 / (viscosity * timeStep + 2.0);
    return (4.0 - 8.0 * k) * q * newer.at(x, y) + (viscosity * timeStep - 2.0) * q * older.at(x, y) +
           2.0 * k * q * newer.neighbours(x, y);
}

/// The normal of heights at shares of width and height, as a colour.
inline Values normalColor(const Texels& heights, double u, double v, double heightMax) {
    const double du = 1.0 / heights.width, dv = 1.0 / heights.height;
    const double slopeX = (heights.filtered(u + du, v) - heights.filtered(u - du, v))[0] * heightMax;
    const double slopeY = (heights.filtered(u, v + dv) - heights.filtered(u, v - dv))[0] * heightMax;
    return Values{-slopeX, -slopeY, 2.0} / std::sqrt(slopeX * slopeX + slopeY * slopeY + 4.0) * 0.5 + 0.5;
}

/// As GLSL defines it, for a ray from a thinner into a denser medium.
inline Values refract(const Values& i, const Values& n, double eta) {
    const double cosine = (n * i).sum();
    return eta * i - (eta * cosine + std::sqrt(1.0 - eta * eta * (1.0 - cosine * cosine))) * n;
}

/// The normal that a colour stands for.
inline Values normal(const Values& color) {
    return (Values{color[0], color[1], color[2]} - 0.5) * 2.0;
}

/// Where a texel shows the picture beneath it, as shares of its width and height. The picture has the heights' size.
inline Values refractedPlace(const Texels& heights, const Texels& normalMap, double heightMax, int x, int y) {
    const int width = heights.width, height = heights.height;
    const Values n = normal(normalMap.texel(x, y));
    const Values ray = refract({0.0, 0.0, -1.0}, {n[1], n[0], n[2]}, 1.0 / 1.33);
    const double t = -heights.at(x, y) * heightMax / ray[2];
    return {std::clamp((x + 0.5 + ray[0] * t) / width, 0.5 / width, 1.0 - 0.5 / width),
            std::clamp((y + 0.5 + ray[1] * t) / height, 0.5 / height, 1.0 - 0.5 / height)};
}

/// What a light adds, seen from above: a square of the cosine.
inline double highlight(const Texels& normalMap, const Values& light, double specular, int x, int y) {
    const Values n = normal(normalMap.texel(x, y));
    const Values half = light / std::sqrt((light * light).sum()) + Values{0.0, 0.0, 1.0};
    const double cosine = std::max(0.0, (n * half).sum() / std::sqrt((half * half).sum()));
    return (n * light).sum() > 0.0 ? specular * cosine * cosine : 0.0;
}

} // namespace tidalume::reference::plain
