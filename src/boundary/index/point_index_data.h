/// The data of the point index, which the builder returns and the index takes over.
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

/// Polygons and the vertices to which they refer.
struct PolygonCopies {
    std::vector<BoundaryPolygon> polygons;
    std::vector<BoundaryVertex> vertices;

    /// Appends a copy of `polygon`, whose indices must refer to elements of `polygonVertices`.
    void add(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& polygonVertices);
};

struct PointIndexData {
    /// The part of the plane with cells. No indexed polygon contains a point outside it.
    BoundingBox region = BoundingBox::empty();
    double xScale = 0.0; ///< cells of the finest level per unit
    double yScale = 0.0;
    double margin = 0.0; ///< more than any rounding error of the point test

    GridLevel overviewLevel;
    Overview overview;
    GridLevel tableLevel;
    std::vector<Cell> table;

    std::vector<Cell> quarters; ///< four for each split cell
    std::vector<Word> leaves;

    /// The vertices of each indexed ring, followed by its first vertex again, so that edge n runs
    /// from ringVertices[n] to ringVertices[n + 1].
    std::vector<BoundaryVertex> ringVertices;

    std::vector<LinePolygon> lines;

    /// Polygons that cells cannot represent, because their coordinates are huge or not finite, or
    /// their bounds are not those of their vertices. Each query tests them.
    PolygonCopies unindexed;
};

/// Builds the index of `polygons`, whose indices must refer to elements of `vertices`. Throws
/// std::bad_alloc if memory runs out.
PointIndexData buildPointIndex(std::span<const BoundaryPolygon> polygons,
                               const std::vector<BoundaryVertex>& vertices);

} // namespace veldtrim
