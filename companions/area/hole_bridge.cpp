#include "area/hole_bridge.h"

#include "area/bridge_search.h"
#include "area/clear_view.h"
#include "area/ring_sweep.h"
#include "area/ring_table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace veldtrim {

namespace {

/// Throws if products of the polygon's coordinates could overflow or lose bits.
void expectExactProducts(const MapPolygon& polygon) {
    const auto isExact = [](double value) {
        return value == 0.0 || (std::fabs(value) >= 1e-100 && std::fabs(value) <= 1e100);
    };
    for (const MapRing& ring : polygon.rings) {
        for (const BoundaryVertex& vertex : ring) {
            if (!isExact(vertex.x) || !isExact(vertex.y)) {
                throw holeFaultNear("has coordinates that are too large or too close to 0 to join "
                                    "its holes exactly,",
                                    vertex);
            }
        }
    }
}

/// Throws if all vertices of a ring lie at one place.
void expectEdges(const MapPolygon& polygon) {
    for (std::size_t i = 0; i < polygon.rings.size(); ++i) {
        const MapRing& ring = polygon.rings[i];
        if (std::all_of(ring.begin(), ring.end(), [&](const BoundaryVertex& vertex) {
                return vertex.x == ring[0].x && vertex.y == ring[0].y;
            })) {
            throw holeFaultNear("has a ring, " + ringName(i) + ", that is a single point", ring[0]);
        }
    }
}

/// The rings as chains of nodes that are spliced together.
class RingChains {
public:
    explicit RingChains(const RingTable& table)
        : table_(table), next_(table.siteOfNode.size()), site_(table.siteOfNode) {
        std::iota(next_.begin(), next_.end(), std::uint32_t{1});
        std::uint32_t first = 0;
        for (std::uint32_t node = 0; node < next_.size(); ++node) {
            if (node + 1 == next_.size() || table.ringOfNode[node + 1] != table.ringOfNode[first]) {
                next_[node] = first;
                first = node + 1;
                parent_.push_back(static_cast<std::uint32_t>(parent_.size()));
            }
        }
    }

    /// Returns the number of one of the rings to which the rings at a site are joined, the same one
    /// for all of them. Rings with that site must have been joined to each other.
    std::uint32_t partOf(std::uint32_t site) {
        return root(table_.ringOfNode[table_.nodesBySite[table_.firstOfSite[site]]]);
    }

    [[nodiscard]] std::uint32_t outerPart() { return root(0); }

    /// Joins rings that have a site in common.
    void joinAtSites() {
        for (std::size_t site = 0; site < table_.sites.size(); ++site) {
            const std::uint32_t node = table_.nodesBySite[table_.firstOfSite[site]];
            for (std::uint32_t i = table_.firstOfSite[site] + 1; i < table_.firstOfSite[site + 1];
                 ++i) {
                const std::uint32_t other = table_.nodesBySite[i];
                if (unite(table_.ringOfNode[node], table_.ringOfNode[other])) {
                    std::swap(next_[node], next_[other]);
                }
            }
        }
    }

    /// Joins two different parts: out along the bridge, round, and back.
    void join(const Bridge& bridge) {
        const std::uint32_t from = table_.nodesBySite[table_.firstOfSite[bridge.from]];
        const std::uint32_t to = table_.nodesBySite[table_.firstOfSite[bridge.to]];
        if (!unite(table_.ringOfNode[from], table_.ringOfNode[to])) {
            throw HoleFault("has a hole that no bridge can join to the outer ring");
        }
        const auto fromCopy = static_cast<std::uint32_t>(next_.size());
        site_.push_back(bridge.from);
        next_.push_back(next_[from]);
        site_.push_back(bridge.to);
        next_.push_back(next_[to]);
        next_[from] = fromCopy + 1;
        next_[to] = fromCopy;
    }

    /// Returns the vertices of the chain that contains the outer ring.
    [[nodiscard]] MapRing outerRing() const {
        MapRing ring;
        ring.reserve(next_.size());
        std::uint32_t node = 0;
        do {
            ring.push_back(table_.sites[site_[node]]);
            node = next_[node];
        } while (node != 0);
        return ring;
    }

private:
    std::uint32_t root(std::uint32_t ring) {
        while (parent_[ring] != ring) {
            parent_[ring] = parent_[parent_[ring]];
            ring = parent_[ring];
        }
        return ring;
    }

    bool unite(std::uint32_t ring, std::uint32_t other) {
        const std::uint32_t a = root(ring);
        const std::uint32_t b = root(other);
        parent_[std::max(a, b)] = std::min(a, b);
        return a != b;
    }

    const RingTable& table_;
    std::vector<std::uint32_t> next_; ///< of each node, and of each copy made for a bridge
    std::vector<std::uint32_t> site_;
    std::vector<std::uint32_t> parent_; ///< of each ring: another ring of the same part
};

/// Joins all rings of one polygon.
class Joiner {
public:
    explicit Joiner(const MapPolygon& polygon)
        : table_(polygon), swept_(sweepRings(table_.sites, table_.edges)),
          view_(table_.sites, table_.edges, swept_), chains_(table_),
          mostWork_(64 * table_.sites.size() + 100'000) {}

    BridgedRing run() {
        chains_.joinAtSites();
        joinByStraightBridges();
        if (!joinByShortestBridges()) {
            joinToTheLeft();
        }
        return {chains_.outerRing(), slantedBridges_};
    }

private:
    [[nodiscard]] bool isJoined(std::uint32_t site) {
        return chains_.partOf(site) == chains_.outerPart();
    }

    void join(const Bridge& bridge) {
        const BoundaryVertex& from = table_.sites[bridge.from];
        const BoundaryVertex& to = table_.sites[bridge.to];
        slantedBridges_ += from.x != to.x && from.y != to.y ? 1 : 0;
        chains_.join(bridge);
        view_.addBridge(bridge.from, bridge.to);
        bridges_.push_back(
            {std::min(bridge.from, bridge.to), std::max(bridge.from, bridge.to), SiteEdge::bridge});
    }

    struct Candidate {
        double length;
        Bridge bridge;
    };

    /// Returns the pairs of neighbours on the same horizontal or vertical line that are in
    /// different parts, shortest first.
    std::vector<Candidate> straightCandidates() {
        const std::vector<BoundaryVertex>& sites = table_.sites;
        std::vector<Candidate> candidates;
        const auto consider = [&](std::uint32_t a, std::uint32_t b, double length) {
            if (chains_.partOf(a) != chains_.partOf(b)) {
                candidates.push_back({length, {a, b}});
            }
        };
        std::vector<std::uint32_t> byHeight(sites.size());
        std::iota(byHeight.begin(), byHeight.end(), std::uint32_t{0});
        std::sort(byHeight.begin(), byHeight.end(), [&](std::uint32_t a, std::uint32_t b) {
            return std::tie(sites[a].y, a) < std::tie(sites[b].y, b);
        });
        for (std::uint32_t i = 1; i < sites.size(); ++i) {
            if (sites[i - 1].x == sites[i].x) {
                consider(i - 1, i, sites[i].y - sites[i - 1].y);
            }
            const std::uint32_t left = byHeight[i - 1];
            const std::uint32_t right = byHeight[i];
            if (sites[left].y == sites[right].y) {
                consider(left, right, sites[right].x - sites[left].x);
            }
        }
        std::sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
            return std::tie(a.length, a.bridge.from, a.bridge.to) <
                   std::tie(b.length, b.bridge.from, b.bridge.to);
        });
        return candidates;
    }

    /// Builds the shortest tree of such bridges (J. B. Kruskal, "On the shortest spanning subtree
    /// of a graph and the traveling salesman problem", Proceedings of the AMS 7, 1956).
    void joinByStraightBridges() {
        for (const auto& [length, bridge] : straightCandidates()) {
            if (work_ > mostWork_) {
                return;
            }
            if (chains_.partOf(bridge.from) != chains_.partOf(bridge.to) &&
                view_.isClear(bridge.from, bridge.to, work_)) {
                join(bridge);
            }
        }
    }

    /// Joins the parts in the order of their leftmost vertices. Then each has a clear bridge: D.
    /// Eberly, "Triangulation by Ear Clipping", 2002. Returns whether the work allowed was enough.
    bool joinByShortestBridges() {
        std::vector<std::vector<std::uint32_t>> parts(table_.ringOfNode.back() + 1);
        std::vector<std::uint32_t> order;
        for (std::uint32_t site = 0; site < table_.sites.size(); ++site) {
            const std::uint32_t part = chains_.partOf(site);
            if (parts[part].empty()) {
                order.push_back(part);
            }
            parts[part].push_back(site);
        }
        if (order.size() == 1) {
            return true;
        }
        BridgeSearch search(table_.sites, view_);
        const std::uint32_t outer = chains_.outerPart();
        search.addTargets(parts[outer]);
        for (const std::uint32_t part : order) {
            if (part == outer) {
                continue;
            }
            const std::optional<Bridge> bridge = search.shortest(parts[part], work_, mostWork_);
            if (!bridge) {
                return false;
            }
            join(*bridge);
            search.addTargets(parts[part]);
        }
        return true;
    }

    /// Joins the parts that are left by bridges from their leftmost vertices.
    void joinToTheLeft() {
        std::vector<SiteEdge> obstacles = table_.edges;
        obstacles.insert(obstacles.end(), bridges_.begin(), bridges_.end());
        sortEdges(obstacles);
        const std::vector<std::uint32_t> leftward = sweepRings(table_.sites, obstacles).leftward;
        for (std::uint32_t site = 0; site < table_.sites.size(); ++site) {
            // A site that is left of this one belongs to a part that is joined already.
            if (!isJoined(site)) {
                join({site, leftward[site]});
            }
        }
    }

    RingTable table_;
    SweptRings swept_;
    ClearView view_;
    RingChains chains_;
    std::vector<SiteEdge> bridges_;
    std::size_t slantedBridges_ = 0;
    std::size_t work_ = 0;
    std::size_t mostWork_;
};

} // namespace

BridgedRing bridgeHoles(const MapPolygon& polygon) {
    if (polygon.rings.size() < 2) {
        return {polygon.rings.empty() ? MapRing{} : polygon.rings.front(), 0};
    }
    expectExactProducts(polygon);
    expectEdges(polygon);
    std::size_t vertices = 0;
    for (const MapRing& ring : polygon.rings) {
        vertices += ring.size();
    }
    if (vertices >= std::numeric_limits<std::uint32_t>::max() / 4) {
        throw HoleFault("has too many vertices to join its holes; cut it into smaller polygons");
    }
    return Joiner(polygon).run();
}

} // namespace veldtrim
