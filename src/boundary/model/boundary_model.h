/// The model boundaries of one run: the area to which elevation points are clipped.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/lazy_point_index.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <cstdint>
#include <span>
#include <vector>

namespace veldtrim {

/// A list of polygons and their common table of vertices, both in the order of the file.
///
/// Every polygon includes its area; there are no holes. Coordinates are in the units of the
/// boundary file. Not thread-safe.
class BoundaryModel {
public:
    void clearVertices();
    void clearPolygons();

    /// clearVertices, then clearPolygons.
    void clear();

    /// Appends a vertex and returns its index.
    std::int32_t addVertex(BoundaryVertex vertex);

    /// Appends a copy of `polygon`, whose indices must refer to vertices of this model.
    void addPolygon(const BoundaryPolygon& polygon);

    [[nodiscard]] const std::vector<BoundaryPolygon>& polygons() const { return polygons_; }
    [[nodiscard]] const std::vector<BoundaryVertex>& vertices() const { return vertices_; }

    /// Whether the point is inside or on the boundary of at least one polygon.
    ///
    /// Not const, because data derived from the polygons, such as the index, is built when it is
    /// first needed. From then on, the time of a query hardly depends on the size of the model.
    bool isInBoundary(const ElevationPoint& point) {
        return locate(point) != PointLocation::Outside;
    }

    /// Returns where the point lies with respect to one of the polygons that contain it, or
    /// `Outside` if none does. Not const, like isInBoundary.
    PointLocation locate(const ElevationPoint& point) {
        return index_.locate(polygons_, vertices_, point);
    }

    /// Stores `locate(points[i])` in `locations[i]` for each i. Both spans must have the same size.
    /// This is faster than single calls for large models.
    void locateEach(std::span<const ElevationPoint> points, std::span<PointLocation> locations) {
        index_.locateEach(polygons_, vertices_, points, locations);
    }

private:
    std::vector<BoundaryPolygon> polygons_;
    std::vector<BoundaryVertex> vertices_;
    LazyPointIndex index_;
};

} // namespace veldtrim
