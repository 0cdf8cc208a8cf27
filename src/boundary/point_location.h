/// Where a point lies with respect to one polygon.
#pragma once

#include "boundary/boundary_polygon.h"
#include "geometry/elevation_point.h"
#include "geometry/tolerance.h"

#include <cstdint>
#include <vector>

namespace veldtrim {

enum class PointLocation : std::int8_t { Outside = -1, OnBoundary = 0, Inside = 1 };

/// Whether the point lies in the polygon's bounds, widened by pretestTolerance on all four sides.
/// This cheap pretest rejects most points that are far from the polygon.
inline bool boundsContain(const BoundaryPolygon& polygon, const ElevationPoint& point) {
    const BoundingBox& bounds = polygon.bounds;
    return bounds.xMin - pretestTolerance <= point.x && point.x <= bounds.xMax + pretestTolerance &&
           bounds.yMin - pretestTolerance <= point.y && point.y <= bounds.yMax + pretestTolerance;
}

/// Returns where a point that has passed boundsContain lies.
///
/// A point on an edge or a vertex is on the boundary. On horizontal and vertical edges, neither the
/// ring's orientation nor its first vertex matters. On a slanted edge, the x at which the edge
/// reaches the y of the point is rounded. So a point on it can get any verdict, and a different one
/// if the edge is drawn in the opposite direction.
///
/// If a ring crosses itself, a point is inside if a ray from it crosses the ring an odd number of
/// times. A polygon of two vertices is a segment, which contains the points at a computed distance
/// of exactly zero. A flat polygon, whose vertices all have the same y, contains the points with
/// that y; boundsContain passes those up to pretestTolerance beyond its ends. A polygon of fewer
/// than two vertices contains nothing. There is no other tolerance. All arithmetic is in double
/// precision, in the order in which it is written.
///
/// May fill the polygon's `segments`. The ring walk counts crossings of a horizontal ray
/// (M. Shimrat, "Algorithm 112: Position of point relative to polygon", CACM 5, 1962) and detects
/// boundary points as in K. Hormann and A. Agathos, "The point in polygon problem for arbitrary
/// polygons", Computational Geometry 20, 2001.
PointLocation locatePoint(BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices,
                          const ElevationPoint& point);

/// Returns the same, but neither uses nor fills the polygon's `segments`.
PointLocation locatePoint(const BoundaryPolygon& polygon,
                          const std::vector<BoundaryVertex>& vertices, const ElevationPoint& point);

} // namespace veldtrim
