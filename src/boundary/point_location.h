/// Where a point lies with respect to one polygon.
#pragma once

#include "boundary/boundary_polygon.h"
#include "geometry/elevation_point.h"
#include "geometry/tolerance.h"

#include <cstdint>
#include <vector>

namespace veldtrim {

enum class PointLocation : std::int8_t { Outside = -1, OnBoundary = 0, Inside = 1 };

/// Whether the point lies in the polygon's bounds widened by pretestTolerance on all four sides:
/// only a point close to the polygon passes.
inline bool boundsContain(const BoundaryPolygon& polygon, const ElevationPoint& point) {
    const BoundingBox& bounds = polygon.bounds;
    return bounds.xMin - pretestTolerance <= point.x && point.x <= bounds.xMax + pretestTolerance &&
           bounds.yMin - pretestTolerance <= point.y && point.y <= bounds.yMax + pretestTolerance;
}

/// The exact verdict for a point that has passed boundsContain.
///
/// A point on an edge or a vertex is on the boundary. On horizontal and vertical edges, neither the
/// ring's orientation nor its first vertex matters. On a slanted edge, the x at which the edge
/// reaches the y of the point is rounded, so that a point on it can get any verdict, and another
/// one if the edge is drawn in the other direction.
///
/// Where rings cross themselves, an odd number of crossings of a ray from the point counts as
/// inside. A polygon of two vertices is a segment, which holds the points at a computed distance of
/// exactly zero. One whose vertices all have one y holds the points with that y, and boundsContain
/// passes them up to pretestTolerance beyond its ends. A polygon of fewer than two vertices holds
/// nothing. There is no other tolerance; all arithmetic is in double precision, in the written
/// order of operations.
///
/// May fill the polygon's `segments`. The ring walk is a crossing count along a horizontal ray
/// (M. Shimrat, "Algorithm 112: Position of point relative to polygon", CACM 5, 1962), with the
/// boundary told apart as in K. Hormann and A. Agathos, "The point in polygon problem for arbitrary
/// polygons", Computational Geometry 20, 2001.
PointLocation locatePoint(BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices,
                          const ElevationPoint& point);

/// The same verdict; neither needs nor fills the polygon's `segments`.
PointLocation locatePoint(const BoundaryPolygon& polygon,
                          const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point);

} // namespace veldtrim
