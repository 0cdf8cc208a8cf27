/// Locates points by walking the polygons, until an index of them pays.
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

/// The point test for some polygons of a vertex table, or for one, which the owner passes with each
/// question. The first questions walk the polygons by the definition; when the walks have cost
/// about what building an index costs, one is built and answers all others.
///
/// The index copies only what `polygons` name of `vertices`. The owner passes the same polygons and
/// vertices each time, and calls `reset` when they have changed. Copies share the index. For one
/// thread.
class LazyPointIndex {
public:
    /// Forgets what was derived from the polygons.
    void reset() { *this = {}; }

    /// Where the point lies with respect to one of `polygons` that holds it, or `Outside`.
    ///
    /// May fill `segments` of the polygons. Their indices must name elements of `vertices`.
    PointLocation locate(std::span<BoundaryPolygon> polygons,
                         const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point);

    /// `locate` for each of `points`, to the element of `locations` with the same position; there
    /// must be as many. With many polygons or vertices faster than one after the other.
    void locateEach(std::span<BoundaryPolygon> polygons,
                    const std::vector<BoundaryVertex>& vertices,
                    std::span<const ElevationPoint> points, std::span<PointLocation> locations);

private:
    enum class Stage : std::uint8_t {
        Unknown, ///< nothing was asked yet
        Walking, ///< until an index pays
        Walked   ///< an index never pays, or there was no memory for it
    };

    /// Walks the polygons, and builds the index when the walks have cost enough.
    PointLocation walkAndCount(std::span<BoundaryPolygon> polygons,
                               const std::vector<BoundaryVertex>& vertices,
                               const ElevationPoint& point);

    /// Builds the index, or goes without where there is no memory for it.
    void build(std::span<const BoundaryPolygon> polygons,
               const std::vector<BoundaryVertex>& vertices);

    std::shared_ptr<const PointIndex> index_;
    Stage stage_ = Stage::Unknown;
    std::size_t stepsLeft_ = 0; ///< polygons and vertices to look at before the index is built
};

} // namespace veldtrim
