/// The model boundaries of one run: the area that elevation points are clipped to.
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

/// A flat list of polygons over one table of vertices, in reading order.
///
/// All polygons are areas to include, of equal standing: no holes, no exclusions. Coordinates are
/// in the units of the boundary file. For one thread.
class BoundaryModel {
public:
    void clearVertices();
    void clearPolygons();

    /// clearVertices, then clearPolygons.
    void clear();

    /// Appends a vertex and returns its index.
    std::int32_t addVertex(BoundaryVertex vertex);

    /// Appends a copy of `polygon`, whose indices must name vertices of this model.
    void addPolygon(const BoundaryPolygon& polygon);

    [[nodiscard]] const std::vector<BoundaryPolygon>& polygons() const { return polygons_; }
    [[nodiscard]] const std::vector<BoundaryVertex>& vertices() const { return vertices_; }

    /// Whether at least one polygon holds the point, inside or on its boundary.
    ///
    /// Not a read-only query: data derived from the polygons is built when it is first needed. The
    /// time of a query then hardly depends on how many vertices and polygons there are.
    bool isInBoundary(const ElevationPoint& point) {
        return locate(point) != PointLocation::Outside;
    }

    /// Where the point lies with respect to a polygon that holds it, or `Outside`. As isInBoundary.
    PointLocation locate(const ElevationPoint& point);

    /// `locate` for each of `points`, to the element of `locations` with the same position; there
    /// must be as many. With many polygons or vertices faster than one after the other.
    void locateEach(std::span<const ElevationPoint> points, std::span<PointLocation> locations);

private:
    /// locate by its definition: polygon after polygon. Calls `count` with the number of polygons
    /// or vertices that it is about to look at.
    template <typename Count>
    PointLocation walkPolygons(const ElevationPoint& point, Count count);

    /// Builds the index, or goes without where there is no memory for it.
    void buildIndex();

    /// Drops what was derived from the polygons before they changed.
    void dropIndex();

    std::vector<BoundaryPolygon> polygons_;
    std::vector<BoundaryVertex> vertices_;

    /// Built when the walks so far have cost about what building it costs; shared by copies.
    std::shared_ptr<const PointIndex> index_;
    std::size_t stepsWalked_ = 0;
    bool isLarge_ = false; ///< an index can pay
};

} // namespace veldtrim
