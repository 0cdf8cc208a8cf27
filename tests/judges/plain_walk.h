/// The point test by its definition, polygon by polygon: the judge of all faster ones.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <algorithm>
#include <vector>

namespace veldtrim::test {

inline bool plainWalk(const std::vector<BoundaryPolygon>& polygons,
                      const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point) {
    return std::any_of(polygons.begin(), polygons.end(), [&](const BoundaryPolygon& polygon) {
        return boundsContain(polygon, point) &&
               locatePoint(polygon, vertices, point) != PointLocation::Outside;
    });
}

/// Whether `found` is right: the verdict of any polygon that holds the point, inside or on its
/// boundary, or `Outside` where none does.
inline bool isVerdict(PointLocation found, const std::vector<BoundaryPolygon>& polygons,
                      const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point) {
    if (found == PointLocation::Outside) {
        return !plainWalk(polygons, vertices, point);
    }
    return std::any_of(polygons.begin(), polygons.end(), [&](const BoundaryPolygon& polygon) {
        return boundsContain(polygon, point) && locatePoint(polygon, vertices, point) == found;
    });
}

} // namespace veldtrim::test
