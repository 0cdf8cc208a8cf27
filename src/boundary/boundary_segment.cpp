#include "boundary/boundary_segment.h"

#include <cmath>

namespace veldtrim {

namespace {

/// The normal of a shorter segment is not scaled to unit length: the quotient might not be finite.
constexpr double shortestLength = 1e-12;

/// A segment up to this squared length counts as a point.
constexpr double shortestSquaredLength = 1e-14;

double distance(const BoundaryVertex& vertex, double x, double y) {
    const double dx = x - vertex.x;
    const double dy = y - vertex.y;
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace

BoundarySegment::BoundarySegment(const BoundaryVertex& from, const BoundaryVertex& to)
    : start(from), end(to), delta{to.x - from.x, to.y - from.y},
      squaredLength(delta.x * delta.x + delta.y * delta.y) {
    double length = std::sqrt(squaredLength);
    if (length < shortestLength) {
        length = 1.0;
    }
    normal = {delta.y / length, -delta.x / length};
}

double BoundarySegment::distanceTo(double x, double y) const {
    if (squaredLength <= shortestSquaredLength) {
        return distance(start, x, y);
    }
    const double fromStartX = x - start.x;
    const double fromStartY = y - start.y;
    const double along =
        (delta.x * fromStartX + delta.y * fromStartY) / (delta.x * delta.x + delta.y * delta.y);
    if (along < 0.0) {
        return distance(start, x, y);
    }
    if (along <= 1.0) {
        return std::abs(normal.x * fromStartX + normal.y * fromStartY);
    }
    return distance(end, x, y);
}

} // namespace veldtrim
