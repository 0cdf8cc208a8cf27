/// A polygon with holes in integer arithmetic, by its definition: the judge of bridged rings.
#pragma once

#include "boundary/point_location.h"
#include "judges/model_builder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim::test {

/// The position of c with respect to the line from a to b: positive to its left, 0 on it. The
/// coordinates must be integers below 2^30.
inline std::int64_t turn(const BoundaryVertex& a, const BoundaryVertex& b,
                         const BoundaryVertex& c) {
    const auto product = [](double left, double right) {
        return static_cast<std::int64_t>(left) * static_cast<std::int64_t>(right);
    };
    return product(b.x - a.x, c.y - a.y) - product(b.y - a.y, c.x - a.x);
}

inline bool isSame(const BoundaryVertex& a, const BoundaryVertex& b) {
    return a.x == b.x && a.y == b.y;
}

inline bool areOpposite(std::int64_t a, std::int64_t b) {
    return (a < 0 && b > 0) || (a > 0 && b < 0);
}

inline bool isOnEdge(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c) {
    return turn(a, b, c) == 0 && std::min(a.x, b.x) <= c.x && c.x <= std::max(a.x, b.x) &&
           std::min(a.y, b.y) <= c.y && c.y <= std::max(a.y, b.y);
}

/// Whether the edges ab and cd cross in a point that is an end of neither.
inline bool cross(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c,
                  const BoundaryVertex& d) {
    return areOpposite(turn(a, b, c), turn(a, b, d)) && areOpposite(turn(c, d, a), turn(c, d, b));
}

/// Whether the edges ab and cd have a point in common.
inline bool meet(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c,
                 const BoundaryVertex& d) {
    return cross(a, b, c, d) || isOnEdge(a, b, c) || isOnEdge(a, b, d) || isOnEdge(c, d, a) ||
           isOnEdge(c, d, b);
}

/// Calls visit(from, to) for each edge of the ring.
template <typename Visit>
void forEachEdge(const Ring& ring, Visit visit) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        visit(ring[i], ring[(i + 1) % ring.size()]);
    }
}

inline PointLocation locateExactly(const Ring& ring, const BoundaryVertex& point) {
    bool odd = false;
    bool onEdge = false;
    forEachEdge(ring, [&](const BoundaryVertex& a, const BoundaryVertex& b) {
        onEdge = onEdge || isOnEdge(a, b, point);
        if ((a.y < point.y) != (b.y < point.y)) {
            odd = odd != ((turn(a, b, point) > 0) == (b.y > a.y));
        }
    });
    return onEdge ? PointLocation::OnBoundary
           : odd  ? PointLocation::Inside
                  : PointLocation::Outside;
}

/// Whether the point is in or on the first ring and not inside any of the others.
inline bool isKept(const std::vector<Ring>& rings, const BoundaryVertex& point) {
    return locateExactly(rings[0], point) != PointLocation::Outside &&
           std::none_of(rings.begin() + 1, rings.end(), [&](const Ring& hole) {
               return locateExactly(hole, point) == PointLocation::Inside;
           });
}

} // namespace veldtrim::test
