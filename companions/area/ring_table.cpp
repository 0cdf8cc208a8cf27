#include "area/ring_table.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <tuple>

namespace veldtrim {

namespace {

std::vector<BoundaryVertex> nodesOf(const MapPolygon& polygon) {
    std::vector<BoundaryVertex> nodes;
    for (const MapRing& ring : polygon.rings) {
        nodes.insert(nodes.end(), ring.begin(), ring.end());
    }
    return nodes;
}

} // namespace

RingTable::RingTable(const MapPolygon& polygon) {
    const std::vector<BoundaryVertex> nodes = nodesOf(polygon);
    nodesBySite.resize(nodes.size());
    std::iota(nodesBySite.begin(), nodesBySite.end(), std::uint32_t{0});
    std::sort(nodesBySite.begin(), nodesBySite.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::tie(nodes[a].x, nodes[a].y, a) < std::tie(nodes[b].x, nodes[b].y, b);
    });
    siteOfNode.resize(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const BoundaryVertex& node = nodes[nodesBySite[i]];
        if (i == 0 || sites.back().x != node.x || sites.back().y != node.y) {
            firstOfSite.push_back(static_cast<std::uint32_t>(i));
            sites.push_back(node);
        }
        siteOfNode[nodesBySite[i]] = static_cast<std::uint32_t>(sites.size() - 1);
    }
    firstOfSite.push_back(static_cast<std::uint32_t>(nodes.size()));

    edges.reserve(nodes.size());
    std::uint32_t ringNumber = 0;
    std::size_t first = 0;
    for (const MapRing& ring : polygon.rings) {
        ringOfNode.insert(ringOfNode.end(), ring.size(), ringNumber);
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const std::uint32_t from = siteOfNode[first + i];
            const std::uint32_t to = siteOfNode[first + (i + 1) % ring.size()];
            if (from != to) {
                edges.push_back({std::min(from, to), std::max(from, to), ringNumber});
            }
        }
        first += ring.size();
        ++ringNumber;
    }
    sortEdges(edges);
}

void sortEdges(std::vector<SiteEdge>& edges) {
    std::sort(edges.begin(), edges.end(), [](const SiteEdge& a, const SiteEdge& b) {
        return std::tie(a.left, a.right, a.ring) < std::tie(b.left, b.right, b.ring);
    });
}

} // namespace veldtrim
