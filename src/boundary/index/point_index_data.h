/// What the point index consists of: its builder returns it, and the index takes it over.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/cell.h"
#include "boundary/index/edge.h"
#include "boundary/index/grid.h"
#include "boundary/index/line_polygon.h"
#include "geometry/bounding_box.h"

#include <span>
#include <vector>

namespace veldtrim {

/// Polygons with the vertices that they name.
struct PolygonCopies {
    std::vector<BoundaryPolygon> polygons;
    std::vector<BoundaryVertex> vertices;

    /// Appends a copy of `polygon`, whose indices name elements of `polygonVertices`.
    void add(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& polygonVertices);
};

struct PointIndexData {
    /// The part of the plane with cells; nothing indexed holds a point outside it.
    BoundingBox region = BoundingBox::empty();
    double xScale = 0.0; ///< cells of the finest level per unit
    double yScale = 0.0;
    double margin = 0.0; ///< more than any rounding error of the point test

    GridLevel overviewLevel;
    Overview overview;
    GridLevel tableLevel;
    std::vector<Cell> table;

    std::vector<Cell> quarters; ///< those of split cells, four by four
    std::vector<Word> leaves;

    /// The vertices of each indexed ring, the first one once more at its end: edge n runs from
    /// ringVertices[n] to ringVertices[n + 1].
    std::vector<BoundaryVertex> ringVertices;

    std::vector<LinePolygon> lines;

    /// Polygons that cells cannot hold, asked each time: their coordinates are huge or not numbers,
    /// or their bounds are not those of their vertices.
    PolygonCopies unindexed;
};

/// Builds the index of `polygons`, whose indices must name elements of `vertices`.
PointIndexData buildPointIndex(std::span<const BoundaryPolygon> polygons,
                               const std::vector<BoundaryVertex>& vertices);

} // namespace veldtrim
