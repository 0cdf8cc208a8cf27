/// Polygons without an interior.
#pragma once

#include "boundary/boundary_segment.h"
#include "boundary/point_location.h"
#include "geometry/bounding_box.h"

namespace veldtrim {

/// A polygon of two vertices, or a flat one with any number of vertices. Cells test it as a whole.
struct LinePolygon {
    BoundingBox bounds;
    BoundarySegment segment; ///< for a flat polygon: its extent and the reach of the pretest
    bool isFlat = false;

    /// Whether the polygon contains the point, which is then on its boundary. A flat polygon
    /// contains exactly the points at its height that pass the pretest.
    [[nodiscard]] bool contains(const ElevationPoint& point) const {
        if (!bounds.widenedBy(pretestTolerance).contains(point.x, point.y)) {
            return false;
        }
        return isFlat ? point.y == bounds.yMin : segment.distanceTo(point.x, point.y) == 0.0;
    }
};

} // namespace veldtrim
