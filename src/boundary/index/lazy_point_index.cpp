#include "boundary/index/lazy_point_index.h"

#include <algorithm>
#include <cassert>
#include <new>

namespace veldtrim {

namespace {

/// The index is built after walks have visited this many polygons and vertices for each one of the
/// model. A few points are not worth an index; for many points, it should come early. Building it
/// takes about as long as reading the boundary file.
constexpr std::size_t worthBuildingAfter = 4;

/// An index takes as long to build as one for this many polygons and vertices at least.
constexpr std::size_t leastSize = 2000;

/// Returns the number of polygons and vertices together.
std::size_t sizeOf(std::span<const BoundaryPolygon> polygons) {
    std::size_t size = polygons.size();
    for (const BoundaryPolygon& polygon : polygons) {
        size += polygon.vertexIndices.size();
    }
    return size;
}

/// Locates a point by testing one polygon after the other; this defines the result. Calls `count`
/// with the number of polygons or vertices that it is about to visit.
template <typename Count>
PointLocation walk(std::span<BoundaryPolygon> polygons, const std::vector<BoundaryVertex>& vertices,
                   const ElevationPoint& point, Count count) {
    for (BoundaryPolygon& polygon : polygons) {
        count(1);
        if (boundsContain(polygon, point)) {
            count(polygon.vertexIndices.size());
            const PointLocation found = locatePoint(polygon, vertices, point);
            if (found != PointLocation::Outside) {
                return found;
            }
        }
    }
    return PointLocation::Outside;
}

} // namespace

PointLocation LazyPointIndex::locate(std::span<BoundaryPolygon> polygons,
                                     const std::vector<BoundaryVertex>& vertices,
                                     const ElevationPoint& point) {
    if (index_) {
        return index_->locate(point);
    }
    if (stage_ == Stage::Walked) {
        return walk(polygons, vertices, point, [](std::size_t) {});
    }
    return walkAndCount(polygons, vertices, point);
}

PointLocation LazyPointIndex::walkAndCount(std::span<BoundaryPolygon> polygons,
                                           const std::vector<BoundaryVertex>& vertices,
                                           const ElevationPoint& point) {
    if (stage_ == Stage::Unknown) {
        stage_ = Stage::Walking;
        stepsLeft_ = worthBuildingAfter * std::max(sizeOf(polygons), leastSize);
    }
    std::size_t steps = 0;
    const PointLocation found =
        walk(polygons, vertices, point, [&](std::size_t more) { steps += more; });
    if (steps <= stepsLeft_) {
        stepsLeft_ -= steps;
    } else if (stage_ == Stage::Walking) {
        build(polygons, vertices);
    }
    return found;
}

void LazyPointIndex::locateEach(std::span<BoundaryPolygon> polygons,
                                const std::vector<BoundaryVertex>& vertices,
                                std::span<const ElevationPoint> points,
                                std::span<PointLocation> locations) {
    assert(points.size() == locations.size());
    if (index_) {
        index_->locateEach(points, locations);
        return;
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        locations[i] = locate(polygons, vertices, points[i]);
    }
}

void LazyPointIndex::build(std::span<const BoundaryPolygon> polygons,
                           const std::vector<BoundaryVertex>& vertices) {
    try {
        index_ = std::make_shared<const PointIndex>(polygons, vertices);
    } catch (const std::bad_alloc&) {
        stage_ = Stage::Walked; // walking is slow, but needs no memory
    }
}

} // namespace veldtrim
