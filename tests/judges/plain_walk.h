/// The point test by its definition, polygon by polygon: the judge of all faster ones.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <algorithm>
#include <vector>

namespace veldtrim::fuzz {

inline bool plainWalk(std::vector<BoundaryPolygon>& polygons,
                      const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point) {
    return std::any_of(polygons.begin(), polygons.end(), [&](BoundaryPolygon& polygon) {
        return boundsContain(polygon, point) &&
               locatePoint(polygon, vertices, point) != PointLocation::Outside;
    });
}

} // namespace veldtrim::fuzz
