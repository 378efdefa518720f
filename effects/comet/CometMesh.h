#pragma once

#include "math/Vector3.h"

namespace tidalume {

/// The mesh of a comet's tail: a grid of 3 rows of 101 vertices. The first column is at the head, the last at the end
/// of the tail; the rows are its two edges and the middle between them.
struct CometMesh {
    static constexpr int columns = 100;                         ///< of quads, along the tail
    static constexpr int rows = 2;                              ///< of quads, across it
    static constexpr int vertices = (rows + 1) * (columns + 1); ///< shared by neighbouring quads
    static constexpr int triangles = 2 * rows * columns;        ///< two a quad
};

/// Fills a tail mesh at progress t. The body covers the path from its start to 0.9 t; the front folds round to a tip at
/// 0.92 t. Half the width is 0.025 of half the screen's width at the head and grows towards the end of the tail.
/// @param path           coefficients D, E, F of the path D + E s + F s^2
/// @param spread         how much wider half the tail is at its end, at the end of the flight, in half screen widths
/// @param width, height  of the screen, in pixels
/// @param vertices       x, 0, y of each vertex, in normalised device coordinates, row by row; not null
void computeCometTail(const Vector3 (&path)[3], float t, float spread, float width, float height, float* vertices);

/// Fill what does not change, and a flat grid until the first frame's mesh takes its place; not null.
/// @param texCoords  u along the tail, then 1 to 0 across it, of each vertex
/// @param indices    three of each triangle
/// @{
void fillCometTexCoords(float* texCoords);
void fillCometIndices(unsigned short* indices);
void fillCometGrid(float* vertices);
/// @}

} // namespace tidalume
