/// Polygons as maps hold them.
#pragma once

#include "boundary/boundary_segment.h"

#include <vector>

namespace veldtrim {

/// The vertices of a ring in order, in the units of the boundary file. The ring is open: its last
/// vertex does not repeat the first.
using MapRing = std::vector<BoundaryVertex>;

/// A polygon: the outer ring, then its holes. The directions of the rings do not matter.
struct MapPolygon {
    std::vector<MapRing> rings;
};

} // namespace veldtrim
