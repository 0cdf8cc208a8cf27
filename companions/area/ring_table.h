/// The vertices and edges of the rings of one polygon, numbered.
#pragma once

#include "area/map_polygon.h"
#include "boundary/boundary_segment.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace veldtrim {

/// The straight line between two sites. As sites are numbered from left to right, `left < right`.
struct SiteEdge {
    /// The ring number of an edge that bounds nothing.
    static constexpr std::uint32_t bridge = std::numeric_limits<std::uint32_t>::max();

    std::uint32_t left;
    std::uint32_t right;
    std::uint32_t ring; ///< 0 for the outer ring, else the number of the hole, or `bridge`

    friend bool operator==(const SiteEdge&, const SiteEdge&) = default;
};

/// The vertices of all rings one after the other ("nodes"), and the different places at which they
/// lie ("sites"). Sites are in the order of x, and of y where x is equal.
struct RingTable {
    /// The polygon must have fewer than 2^32 - 1 vertices.
    explicit RingTable(const MapPolygon& polygon);

    std::vector<std::uint32_t> ringOfNode;
    std::vector<std::uint32_t> siteOfNode;
    std::vector<std::uint32_t> nodesBySite;
    std::vector<std::uint32_t>
        firstOfSite; ///< where a site's nodes begin in `nodesBySite`; and end
    std::vector<BoundaryVertex> sites;
    std::vector<SiteEdge> edges; ///< of all rings, ordered by `left`; without those of length 0
};

/// Orders edges by `left`, and so that the order does not depend on how they were found.
void sortEdges(std::vector<SiteEdge>& edges);

} // namespace veldtrim
