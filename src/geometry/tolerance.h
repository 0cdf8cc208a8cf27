/// How exact the point test is: the numbers that it and its index agree on.
#pragma once

#include <algorithm>
#include <limits>

namespace veldtrim {

/// How far beyond its bounds a polygon is still asked about a point. The verdict itself is exact.
inline constexpr double pretestTolerance = 1e-6;

/// Coordinates beyond this are not sorted into cells.
inline constexpr double largestCoordinate = 1e15;
static_assert(largestCoordinate < 0.25 / std::numeric_limits<double>::epsilon(),
              "coordinates still have a fraction, and products of a few of them do not overflow");

/// Rounding errors of the point test and its index, in units in the last place of the largest
/// coordinate: those of a crossing abscissa, and of whatever the index computes from edges.
inline constexpr double crossingError = 16.0;
inline constexpr double indexError = 8.0 + 8.0 + 8.0; // a clipped edge, a point's cell, a distance

/// The index's margin, as a share of the largest coordinate.
inline constexpr double indexMarginShare = 64 * std::numeric_limits<double>::epsilon();
static_assert(indexMarginShare >
                  (crossingError + indexError) * std::numeric_limits<double>::epsilon(),
              "the margin is more than all rounding errors together");

/// More than any rounding error of the point test, where no coordinate is larger than `largest`.
/// The lower bound covers what underflows near zero.
constexpr double indexMargin(double largest) {
    return std::max(largest * indexMarginShare, 1e-150);
}

} // namespace veldtrim
