#pragma once

#include "looks/Color.h"
#include "looks/Parameter.h"

#include <cstddef>
#include <iterator>

/// What BlobsLook draws, as data.
namespace tidalume::blobs {

/// One drawing of all balls. The layers of a palette go from the rim to the highlights, with smaller radii, shifted
/// towards the light at the upper left.
struct Layer {
    float scale = 1; // of the radius
    float inset = 0; // taken off the radius, in shorter sides, so that small drops have no highlights
    float shift = 0; // to the left and up, in radii
    Color color;
};

inline constexpr Layer lavaLayers[] = {
    {1.40F, 0.000F, 0.00F, {1.00F, 0.30F, 0.25F, 0.07F}}, {1.18F, 0.000F, 0.00F, {1.00F, 0.30F, 0.22F, 0.10F}},
    {1.00F, 0.000F, 0.00F, {0.62F, 0.07F, 0.20F, 1.00F}}, {0.93F, 0.004F, 0.03F, {0.78F, 0.13F, 0.18F, 0.80F}},
    {0.81F, 0.010F, 0.07F, {0.92F, 0.24F, 0.15F, 0.80F}}, {0.66F, 0.016F, 0.11F, {0.99F, 0.42F, 0.15F, 0.70F}},
    {0.48F, 0.022F, 0.17F, {1.00F, 0.62F, 0.26F, 0.60F}}, {0.28F, 0.024F, 0.24F, {1.00F, 0.86F, 0.58F, 0.55F}},
};
inline constexpr Layer mercuryLayers[] = {
    {1.00F, 0.000F, 0.00F, {0.20F, 0.23F, 0.29F, 1.00F}}, {0.95F, 0.002F, 0.02F, {0.36F, 0.40F, 0.47F, 0.90F}},
    {0.86F, 0.005F, 0.05F, {0.52F, 0.56F, 0.63F, 0.85F}}, {0.72F, 0.008F, 0.09F, {0.67F, 0.71F, 0.77F, 0.80F}},
    {0.55F, 0.010F, 0.14F, {0.79F, 0.83F, 0.88F, 0.80F}}, {0.36F, 0.010F, 0.21F, {0.91F, 0.94F, 0.97F, 0.85F}},
    {0.20F, 0.009F, 0.27F, {1.00F, 1.00F, 1.00F, 0.95F}},
};
inline constexpr Layer inkLayers[] = {
    {1.20F, 0.000F, 0.00F, {0.10F, 0.12F, 0.26F, 0.12F}},
    {1.12F, 0.000F, 0.00F, {0.09F, 0.11F, 0.24F, 0.24F}},
    {1.05F, 0.000F, 0.00F, {0.07F, 0.09F, 0.20F, 0.45F}},
    {1.00F, 0.000F, 0.00F, {0.04F, 0.05F, 0.13F, 0.94F}},
};
inline constexpr Span<Layer> palettes[] = {lavaLayers, mercuryLayers, inkLayers};
inline constexpr float largestScale = 1.4F; // of all layers

/// Drops that follow one another along one path. Lengths in shorter sides; positions of paths repeat in every shorter
/// side of the width.
struct Stream {
    bool rising;
    float position; // of the path, 0 left to 1 right
    float radius;
    float sway;    // sideways, to either side
    float spacing; // of the drops along the path, which sets their share of the speed too
};

inline constexpr Stream streams[] = {
    {true, 0.30F, 0.150F, 0.14F, 0.456F},
    {false, 0.68F, 0.125F, 0.16F, 0.380F},
    {true, 0.80F, 0.075F, 0.10F, 0.326F},
    {false, 0.22F, 0.060F, 0.12F, 0.285F},
};
inline constexpr std::size_t streamCount = std::size(streams);
inline constexpr float widestSpacing = 0.456F;
inline constexpr float swelling = 0.22F;        // of a drop on its way, as a share of its radius
inline constexpr float radiusUnlikeness = 0.1F; // of streams, as a share
inline constexpr float positionUnlikeness = 0.06F;
inline constexpr float largestDrop = 0.202F; // that these make
inline constexpr float beyond = 0.1F;        // where a path begins and ends outside the surface
inline constexpr float growing = 0.22F;      // length of the path on which a drop grows, and shrinks again

} // namespace tidalume::blobs
