/// One polygon of the model boundaries.
#pragma once

#include "boundary/boundary_segment.h"
#include "geometry/bounding_box.h"

#include <cstdint>
#include <vector>

namespace veldtrim {

/// A ring of vertices, given by their positions in the vertex table of the model.
///
/// An implicit edge closes the ring from the last vertex to the first. A file that repeats the
/// first point at the end merely adds a vertex. A polygon of fewer than two vertices contains no
/// point.
struct BoundaryPolygon {
    /// Sets `bounds` to the bounding box of the vertices. Leaves it unchanged if there are none.
    void computeBounds(const std::vector<BoundaryVertex>& vertices);

    /// Replaces `segments` by the segments between consecutive vertices, without the closing edge.
    /// Fewer than two vertices give no segments.
    void buildSegments(const std::vector<BoundaryVertex>& vertices);

    BoundingBox bounds;
    std::vector<std::int32_t> vertexIndices;

    /// Derived from the vertices; empty until the point test first needs it.
    std::vector<BoundarySegment> segments;
};

} // namespace veldtrim
