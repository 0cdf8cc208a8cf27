#include "boundary/point_location.h"

#include "boundary/edge_crossing.h"
#include "boundary/ring.h"

#include <cstddef>

namespace veldtrim {

namespace {

inline PointLocation walkRing(const Ring& ring, const ElevationPoint& point) {
    const auto [px, py] = point;

    std::size_t position = 0;
    while (position < ring.size() && ring.vertex(position).y == py) {
        ++position;
    }
    if (position == ring.size()) {
        return PointLocation::OnBoundary; // the polygon is flat, and the point is on its line
    }

    // The ray runs from the point towards increasing x. `previous` is the last vertex that is not
    // on the ray. While the ring runs along the ray, `lastX` is the x of its latest vertex.
    const BoundaryVertex* previous = &ring.vertex(position);
    bool odd = false;
    bool onLine = false;
    double lastX = 0.0;
    for (std::size_t step = 0; step < ring.size(); ++step) {
        position = ring.next(position);
        const BoundaryVertex& current = ring.vertex(position);
        if (onLine && current.y == py) {
            if (passes(lastX, px, current.x) || current.x == px) {
                return PointLocation::OnBoundary;
            }
            lastX = current.x;
        } else if (onLine) {
            odd = odd != passes(previous->y, py, current.y);
            previous = &current;
            onLine = false;
        } else if (current.y == py && current.x >= px) {
            // If the previous vertex is on the line too, it is left of the point, so the point is
            // on the edge.
            if (current.x == px || previous->y == py) {
                return PointLocation::OnBoundary;
            }
            onLine = true;
            lastX = current.x;
        } else {
            const EdgeEffect effect = crossOrdinaryEdge(*previous, current, point);
            if (effect == EdgeEffect::Boundary) {
                return PointLocation::OnBoundary;
            }
            odd = odd != (effect == EdgeEffect::Toggle);
            previous = &current;
        }
    }
    return odd ? PointLocation::Inside : PointLocation::Outside;
}

PointLocation locateOnSegment(const BoundarySegment& segment, const ElevationPoint& point) {
    return segment.distanceTo(point.x, point.y) == 0.0 ? PointLocation::OnBoundary
                                                       : PointLocation::Outside;
}

} // namespace

PointLocation locatePoint(BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices,
                          const ElevationPoint& point) {
    const Ring ring(polygon, vertices);
    if (ring.size() <= 1) {
        return PointLocation::Outside;
    }
    if (ring.size() == 2) {
        if (polygon.segments.empty()) {
            polygon.buildSegments(vertices);
        }
        return locateOnSegment(polygon.segments.front(), point);
    }
    return walkRing(ring, point);
}

PointLocation locatePoint(const BoundaryPolygon& polygon,
                          const std::vector<BoundaryVertex>& vertices,
                          const ElevationPoint& point) {
    const Ring ring(polygon, vertices);
    if (ring.size() == 2) {
        return locateOnSegment({ring.vertex(0), ring.vertex(1)}, point);
    }
    return ring.size() < 2 ? PointLocation::Outside : walkRing(ring, point);
}

} // namespace veldtrim
