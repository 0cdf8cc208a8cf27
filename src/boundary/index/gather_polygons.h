/// The first step of building the point index: its copies of the polygons.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/group.h"
#include "boundary/index/point_index_data.h"
#include "geometry/bounding_box.h"

#include <span>
#include <vector>

namespace veldtrim {

/// What the root cell holds.
struct GatheredPolygons {
    GroupList groups; ///< their numbers are positions in the polygons, or in the lines
    BoundingBox box = BoundingBox::empty(); ///< of all edges
};

/// Copies each polygon to where `data` keeps its kind: ring vertices, lines or unindexed. Polygons
/// that hold no point are left out.
GatheredPolygons gatherPolygons(std::span<const BoundaryPolygon> polygons,
                                const std::vector<BoundaryVertex>& vertices, PointIndexData& data);

} // namespace veldtrim
