/// The first step of building the point index: copying the polygons.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/group.h"
#include "boundary/index/point_index_data.h"
#include "geometry/bounding_box.h"

#include <span>
#include <vector>

namespace veldtrim {

/// The content of the root cell.
struct GatheredPolygons {
    GroupList groups; ///< numbers are positions in the polygons or, for lines, in `lines`
    BoundingBox box = BoundingBox::empty(); ///< of all edges
};

/// Copies each polygon into the part of `data` for its kind: ring vertices, lines or unindexed
/// polygons. Skips polygons that contain no point. Returns the content of the root cell.
GatheredPolygons gatherPolygons(std::span<const BoundaryPolygon> polygons,
                                const std::vector<BoundaryVertex>& vertices, PointIndexData& data);

} // namespace veldtrim
