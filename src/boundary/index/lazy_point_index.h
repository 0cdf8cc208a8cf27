/// Locates points by walking the polygons until an index pays off.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/point_index.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace veldtrim {

/// The point test for polygons that the owner passes with each query. The first queries walk the
/// polygons. When the walks have cost about as much as building an index, one is built and answers
/// all further queries.
///
/// The owner must pass the same polygons and vertices each time and call `reset` after they change.
/// The index copies only the vertices that the polygons use. Copies of this object share the index.
/// Not thread-safe.
class LazyPointIndex {
public:
    /// Discards everything that was derived from the polygons.
    void reset() { *this = {}; }

    /// Returns where the point lies with respect to one of the `polygons` that contain it, or
    /// `Outside` if none does.
    ///
    /// May fill `segments` of the polygons. Their indices must refer to elements of `vertices`.
    PointLocation locate(std::span<BoundaryPolygon> polygons,
                         const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point);

    /// Stores the result of `locate` for `points[i]` in `locations[i]`. Both spans must have the
    /// same size. This is faster than single calls for large models.
    void locateEach(std::span<BoundaryPolygon> polygons,
                    const std::vector<BoundaryVertex>& vertices,
                    std::span<const ElevationPoint> points, std::span<PointLocation> locations);

private:
    enum class Stage : std::uint8_t {
        Unknown, ///< there was no query yet
        Walking, ///< walks until an index pays off
        Walked   ///< always walks: there was no memory for an index
    };

    /// Walks the polygons, and builds the index once the walks have cost enough.
    PointLocation walkAndCount(std::span<BoundaryPolygon> polygons,
                               const std::vector<BoundaryVertex>& vertices,
                               const ElevationPoint& point);

    /// Builds the index. If memory runs out, all further queries walk.
    void build(std::span<const BoundaryPolygon> polygons,
               const std::vector<BoundaryVertex>& vertices);

    std::shared_ptr<const PointIndex> index_;
    Stage stage_ = Stage::Unknown;
    std::size_t stepsLeft_ = 0; ///< polygons and vertices to visit before the index is built
};

} // namespace veldtrim
