/// One polygon of the model boundaries.
#pragma once

#include "boundary/boundary_segment.h"
#include "geometry/bounding_box.h"

#include <cstdint>
#include <vector>

namespace veldtrim {

/// A ring of vertices, named by their positions in the vertex table of the model.
///
/// The ring closes from the last vertex to the first by itself; a file that repeats its first point
/// at the end only adds one more vertex. A polygon of fewer than two vertices holds no point.
struct BoundaryPolygon {
    /// Sets `bounds` to the box of the polygon's vertices; without vertices it stays as it is.
    void computeBounds(const std::vector<BoundaryVertex>& vertices);

    /// Fills `segments` anew with the segments between consecutive vertices, without one that
    /// closes the ring: none for fewer than two vertices.
    void buildSegments(const std::vector<BoundaryVertex>& vertices);

    BoundingBox bounds;
    std::vector<std::int32_t> vertexIndices;

    /// Derived from the vertices; empty until the point test first needs it.
    std::vector<BoundarySegment> segments;
};

} // namespace veldtrim
