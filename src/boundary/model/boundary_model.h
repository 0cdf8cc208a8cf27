/// The model boundaries of one run: the area that elevation points are clipped to.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/lazy_point_index.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <cstdint>
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
    PointLocation locate(const ElevationPoint& point) {
        return index_.locate(polygons_, vertices_, point);
    }

    /// `locate` for each of `points`, to the element of `locations` with the same position; there
    /// must be as many. With many polygons or vertices faster than one after the other.
    void locateEach(std::span<const ElevationPoint> points, std::span<PointLocation> locations) {
        index_.locateEach(polygons_, vertices_, points, locations);
    }

private:
    std::vector<BoundaryPolygon> polygons_;
    std::vector<BoundaryVertex> vertices_;
    LazyPointIndex index_;
};

} // namespace veldtrim
