/// Checks that rings bound an area, and finds out where that area lies around each vertex.
#pragma once

#include "area/ring_table.h"
#include "boundary/boundary_segment.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace veldtrim {

/// What lies on one side of an edge: `outside`, `area`, or the number of a hole.
using Face = std::uint32_t;
constexpr Face area = 0;
constexpr Face outside = std::numeric_limits<Face>::max();

/// A piece of one or more edges that lie on one another, between two sites without any between.
struct Strand {
    std::uint32_t from;     ///< site
    std::uint32_t to;       ///< site; greater than `from`
    Face above;             ///< what lies above it, or to the left of it if it is vertical
    std::uint32_t newest;   ///< the last site seen that touches that face
    std::uint32_t farthest; ///< of its edges the one that ends farthest to the right
    std::uint32_t first;    ///< of the list of its edges
};

/// The subdivision of the plane by all rings.
struct SweptRings {
    std::vector<Strand> strands;            ///< ordered by `from`, then from below to above
    std::vector<std::uint32_t> firstStrand; ///< of each site; and the end
    std::vector<Face> below;                ///< what lies below the first strand of each site

    /// For each site, one that is to the left of it (or below it at the same x), and that it can
    /// see or is connected to by a strand; the site itself if there is none. Lines from different
    /// sites to these do not cross each other or any edge: M. de Berg et al., "Computational
    /// Geometry", 3rd edition, 2008, section 3.2 ("helper").
    std::vector<std::uint32_t> leftward;
};

/// Returns the subdivision. Throws HoleFault if edges cross, or if the rings do not bound an area:
/// see bridgeHoles. `edges` must be in the order of sortEdges; those of bridges are obstacles only.
///
/// Sweeps a line over the plane from left to right, tests edges for crossings when they become
/// neighbours (M. I. Shamos and D. Hoey, "Geometric intersection problems", FOCS 1976), and splits
/// edges at the sites on them (de Berg et al., section 2.1). Takes O(n log n) time.
SweptRings sweepRings(const std::vector<BoundaryVertex>& sites, const std::vector<SiteEdge>& edges);

} // namespace veldtrim
