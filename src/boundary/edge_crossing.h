/// What one edge of a ring means for a point: the step that every point test is made of.
#pragma once

#include "boundary/boundary_segment.h"
#include "geometry/elevation_point.h"

#include <algorithm>
#include <cstdint>

namespace veldtrim {

/// What an edge adds to the verdict of its ring on a point.
enum class EdgeEffect : std::uint8_t {
    None,
    Toggle,  ///< the ray from the point towards increasing x crosses the edge
    Boundary ///< the point lies on the edge
};

/// Whether an edge from `a` to `b` passes from one side of `at` to the other, on the y axis.
inline bool passes(double a, double at, double b) {
    return (a < at) == (at < b);
}

/// The abscissa at which an edge that is not horizontal reaches the height `y`.
inline double crossingAt(const BoundaryVertex& from, const BoundaryVertex& to, double y) {
    return from.x + (y - from.y) * (to.x - from.x) / (to.y - from.y);
}

/// The effect of an edge that does not touch the ray with an end at or to the right of the point.
inline EdgeEffect crossOrdinaryEdge(const BoundaryVertex& from, const BoundaryVertex& to,
                                    const ElevationPoint& point) {
    if (!passes(from.y, point.y, to.y)) {
        return EdgeEffect::None;
    }
    if (std::min(from.x, to.x) > point.x) {
        return EdgeEffect::Toggle;
    }
    if (point.x > std::max(from.x, to.x)) {
        return EdgeEffect::None;
    }
    const double crossing = crossingAt(from, to, point.y);
    if (crossing == point.x) {
        return EdgeEffect::Boundary;
    }
    return crossing > point.x ? EdgeEffect::Toggle : EdgeEffect::None;
}

/// The effect of an edge with an end at the height of the point, where coordinates are finite.
///
/// A ring that touches the ray, or follows it for some edges, crosses it if it comes from one side
/// and leaves to the other. Half of that decision falls to the edge that reaches the ray and half
/// to the edge that leaves it: each toggles when its other end lies below. So each edge can be
/// looked at by itself, in any order.
inline EdgeEffect touchEdge(const BoundaryVertex& from, const BoundaryVertex& to,
                            const ElevationPoint& point) {
    const bool fromOnLine = from.y == point.y;
    const bool toOnLine = to.y == point.y;
    if ((fromOnLine && from.x == point.x) || (toOnLine && to.x == point.x)) {
        return EdgeEffect::Boundary;
    }
    if (fromOnLine && toOnLine) {
        return (from.x < point.x) != (to.x < point.x) ? EdgeEffect::Boundary : EdgeEffect::None;
    }
    const BoundaryVertex& onLine = fromOnLine ? from : to;
    if (onLine.x > point.x) {
        const BoundaryVertex& other = fromOnLine ? to : from;
        return other.y < point.y ? EdgeEffect::Toggle : EdgeEffect::None;
    }
    return crossOrdinaryEdge(from, to, point);
}

/// The effect of any edge of a ring whose coordinates are finite and which is not flat. The ring's
/// verdict is `OnBoundary` if one of its edges says so, else the parity of the toggles: the same as
/// the verdict of the walk along the ring.
inline EdgeEffect edgeEffect(const BoundaryVertex& from, const BoundaryVertex& to,
                             const ElevationPoint& point) {
    if (from.y == point.y || to.y == point.y) {
        return touchEdge(from, to, point);
    }
    return crossOrdinaryEdge(from, to, point);
}

} // namespace veldtrim
