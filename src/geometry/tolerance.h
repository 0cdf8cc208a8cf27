/// Tolerances and error bounds that the point test and its index share.
#pragma once

#include <algorithm>
#include <limits>

namespace veldtrim {

/// Points up to this far outside a polygon's bounds, in the units of the boundary file, are still
/// tested against the polygon. The test itself is exact.
inline constexpr double pretestTolerance = 1e-6;

/// Polygons with larger coordinates are not divided into cells.
inline constexpr double largestCoordinate = 1e15;
static_assert(largestCoordinate < 0.25 / std::numeric_limits<double>::epsilon(),
              "coordinates still have a fraction, and products of a few of them do not overflow");

/// Bounds of rounding errors, in units in the last place of the largest coordinate: for the x of a
/// crossing in the point test, and for everything that the index computes from edges.
inline constexpr double crossingError = 16.0;
inline constexpr double indexError = 8.0 + 8.0 + 8.0; // a clipped edge, a point's cell, a distance

/// The margin of the index, relative to the largest coordinate.
inline constexpr double indexMarginShare = 64 * std::numeric_limits<double>::epsilon();
static_assert(indexMarginShare >
                  (crossingError + indexError) * std::numeric_limits<double>::epsilon(),
              "the margin is more than all rounding errors together");

/// Returns a margin that exceeds all rounding errors of the point test if no coordinate is larger
/// than `largest`. The lower bound covers underflow near zero.
constexpr double indexMargin(double largest) {
    return std::max(largest * indexMarginShare, 1e-150);
}

} // namespace veldtrim
