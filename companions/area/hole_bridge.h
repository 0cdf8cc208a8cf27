/// Joins the holes of a polygon to its outer ring, for files that know no holes.
#pragma once

#include "area/hole_fault.h"
#include "area/map_polygon.h"

#include <cstddef>

namespace veldtrim {

/// A polygon with holes as one ring.
struct BridgedRing {
    MapRing ring;
    std::size_t slantedBridges = 0; ///< how many bridges are neither horizontal nor vertical
};

/// Returns a ring that keeps the same points as the polygon: those in or on its outer ring that are
/// not inside a hole. Points on the ring of a hole are kept.
///
/// The ring goes from one ring to the next along a bridge, which is a straight line between two
/// vertices, round that ring, and back along the bridge. Bridges lie in the area. They neither
/// cross nor touch anything between their ends, except that a bridge may lie on an edge. Each adds
/// two vertices to those of the rings. Rings with a vertex in common are joined there and need no
/// bridge. The other rings are joined by horizontal and vertical bridges, shortest first, as far as
/// there are any, then by the shortest slanted ones. In polygons that are so intricate that the
/// search for the shortest takes long, the remaining holes are joined by the first clear bridge
/// from their leftmost vertices to the left instead. The result depends on the polygon only.
///
/// A point on a horizontal or vertical bridge is kept. A point on a slanted one may be dropped,
/// because the two ways along it can round differently: see point_location.h.
///
/// Each ring must have at least three vertices, and all coordinates must be finite. A polygon
/// without holes is returned unchanged and unchecked, one without rings as an empty ring. Throws
/// HoleFault if a ring of a polygon with holes is a single point, if edges cross each other
/// anywhere but in a vertex, if a hole or a piece of one lies outside the outer ring, if holes
/// overlap or lie in one another, or if coordinates other than 0 are below 1e-100 or beyond 1e100
/// in size. All of this is decided exactly. Rings may touch themselves and each other in vertices
/// and along edges, but not so that very many edges lie on one another. Takes O(n log n) time for n
/// vertices.
BridgedRing bridgeHoles(const MapPolygon& polygon);

} // namespace veldtrim
