/// The effect of one edge of a ring on a point: the elementary step of every point test.
#pragma once

#include "boundary/boundary_segment.h"
#include "geometry/elevation_point.h"

#include <algorithm>
#include <cstdint>

namespace veldtrim {

/// The effect of an edge on the verdict of its ring for a point.
enum class EdgeEffect : std::uint8_t {
    None,
    Toggle,  ///< the ray from the point towards increasing x crosses the edge
    Boundary ///< the point lies on the edge
};

/// Whether the way from `a` to `b` passes `at`: a < at < b or a >= at >= b.
inline bool passes(double a, double at, double b) {
    return (a < at) == (at < b);
}

/// Returns the x coordinate of an edge at the height `y`. The edge must not be horizontal.
inline double crossingAt(const BoundaryVertex& from, const BoundaryVertex& to, double y) {
    return from.x + (y - from.y) * (to.x - from.x) / (to.y - from.y);
}

/// Returns the effect of an edge with neither end on the ray from the point.
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

/// Returns the effect of an edge with an end at the height of the point. All coordinates must be
/// finite.
///
/// A ring that touches the ray, or runs along it for some edges, crosses it if it arrives on one
/// side and leaves on the other. The edge that reaches the ray and the edge that leaves it each
/// toggle if their other end lies below: together once for a crossing, else not at all or twice.
/// So edges can be evaluated independently and in any order.
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

/// Returns the effect of any edge of a ring that has finite coordinates and is not flat. The ring's
/// verdict is `OnBoundary` if any edge has the effect `Boundary`, else it is the parity of the
/// toggles. This always equals the verdict of the walk along the ring.
inline EdgeEffect edgeEffect(const BoundaryVertex& from, const BoundaryVertex& to,
                             const ElevationPoint& point) {
    if (from.y == point.y || to.y == point.y) {
        return touchEdge(from, to, point);
    }
    return crossOrdinaryEdge(from, to, point);
}

} // namespace veldtrim
