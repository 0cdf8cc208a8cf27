/// Polygons as maps hold them.
#pragma once

#include "boundary/boundary_segment.h"

#include <vector>

namespace veldtrim {

/// The vertices of a ring in their order, in the units of the boundary file.
using MapRing = std::vector<BoundaryVertex>;

/// An outer ring, then the holes in it.
struct MapPolygon {
    std::vector<MapRing> rings;
};

} // namespace veldtrim
