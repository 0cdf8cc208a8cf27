/// Polygons without an inside.
#pragma once

#include "boundary/boundary_segment.h"
#include "boundary/point_location.h"
#include "geometry/bounding_box.h"

namespace veldtrim {

/// A polygon of two vertices, or a flat one, however many vertices it has: cells ask it as a whole.
struct LinePolygon {
    BoundingBox bounds;
    BoundarySegment segment; ///< of a flat polygon: its extent
    bool isFlat = false;

    /// Whether the polygon holds the point, which is then on its boundary. A flat polygon holds all
    /// points of its height that pass the pretest, and no others.
    [[nodiscard]] bool contains(const ElevationPoint& point) const {
        if (!bounds.widenedBy(pretestTolerance).contains(point.x, point.y)) {
            return false;
        }
        return isFlat ? point.y == bounds.yMin : segment.distanceTo(point.x, point.y) == 0.0;
    }
};

} // namespace veldtrim
