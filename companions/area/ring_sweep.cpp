#include "area/ring_sweep.h"

#include "area/exact_side.h"
#include "area/hole_fault.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>

namespace veldtrim {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// Returns where the lines of two edges that cross meet.
BoundaryVertex meetingPoint(const BoundaryVertex& a, const BoundaryVertex& b,
                            const BoundaryVertex& c, const BoundaryVertex& d) {
    const double along = (c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x);
    const double across = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
    const double share = across == 0.0 ? 0.5 : std::clamp(along / across, 0.0, 1.0);
    return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
}

class Sweep {
public:
    Sweep(const std::vector<BoundaryVertex>& sites, const std::vector<SiteEdge>& edges)
        : sites_(sites), edges_(edges), nextInStrand_(edges.size(), none),
          splitsLeft_(16 * edges.size() + 1000), status_(Order{this}) {
        result_.strands.reserve(edges.size());
        result_.leftward.reserve(sites.size());
        result_.below.reserve(sites.size());
        result_.firstStrand.reserve(sites.size() + 1);
    }

    SweptRings run() {
        for (std::uint32_t site = 0; site < sites_.size(); ++site) {
            visit(site);
        }
        result_.firstStrand.push_back(static_cast<std::uint32_t>(result_.strands.size()));
        return std::move(result_);
    }

private:
    struct Place {
        std::uint32_t site;
    };

    /// Orders the strands that the sweep line meets from below to above.
    struct Order {
        using is_transparent = void; // NOLINT(readability-identifier-naming): given by std::set
        bool operator()(std::uint32_t a, std::uint32_t b) const { return sweep->isBelow(a, b); }
        bool operator()(std::uint32_t strand, Place place) const {
            return sweep->sideOfStrand(strand, place.site) > 0;
        }
        bool operator()(Place place, std::uint32_t strand) const {
            return sweep->sideOfStrand(strand, place.site) < 0;
        }
        const Sweep* sweep;
    };
    using Status = std::set<std::uint32_t, Order>;

    [[nodiscard]] const SiteEdge& edgeOf(std::uint32_t strand) const {
        return edges_[result_.strands[strand].farthest];
    }

    [[nodiscard]] int side(std::uint32_t from, std::uint32_t to, std::uint32_t site) const {
        return sideOf(sites_[from], sites_[to], sites_[site]);
    }

    [[nodiscard]] int sideOfStrand(std::uint32_t strand, std::uint32_t site) const {
        const SiteEdge& edge = edgeOf(strand);
        return side(edge.left, edge.right, site);
    }

    [[nodiscard]] bool isBelow(std::uint32_t a, std::uint32_t b) const {
        const std::uint32_t aFrom = result_.strands[a].from;
        const std::uint32_t bFrom = result_.strands[b].from;
        if (aFrom == bFrom) {
            return side(aFrom, edgeOf(a).right, edgeOf(b).right) > 0;
        }
        return aFrom < bFrom ? sideOfStrand(a, bFrom) > 0 : sideOfStrand(b, aFrom) < 0;
    }

    void visit(std::uint32_t site) {
        const auto [low, high] = status_.equal_range(Place{site});
        const bool hasLower = low != status_.begin();
        const std::uint32_t lower = hasLower ? *std::prev(low) : none;
        result_.leftward.push_back(low != high ? result_.strands[*low].from
                                   : hasLower  ? result_.strands[lower].newest
                                               : site);
        outgoing_.clear();
        std::uint32_t goesOn = none;
        std::for_each(low, high, [&](std::uint32_t strand) {
            if (release(strand, site)) {
                // Two that go on through the same site cross there.
                expectSound(goesOn == none, goesOn, strand);
                goesOn = strand;
            }
        });
        const auto upper = status_.erase(low, high);
        for (; nextEdge_ < edges_.size() && edges_[nextEdge_].left == site; ++nextEdge_) {
            outgoing_.push_back(nextEdge_);
        }
        std::sort(outgoing_.begin(), outgoing_.end(), [&](std::uint32_t a, std::uint32_t b) {
            const int turn = side(site, edges_[a].right, edges_[b].right);
            return turn != 0 ? turn > 0 : a < b;
        });

        if (hasLower) {
            result_.strands[lower].newest = site;
        }
        result_.below.push_back(hasLower ? result_.strands[lower].above : outside);
        const auto first = static_cast<std::uint32_t>(result_.strands.size());
        result_.firstStrand.push_back(first);
        addStrands(site, upper);
        const auto end = static_cast<std::uint32_t>(result_.strands.size());
        const std::uint32_t next = upper != status_.end() ? *upper : none;
        expectNoCrossing(lower, first != end ? first : next);
        if (first != end) {
            expectNoCrossing(end - 1, next);
        }
    }

    /// Ends a strand at a site. Those of its edges that go on are outgoing edges of the site.
    /// Returns whether there are any.
    bool release(std::uint32_t strand, std::uint32_t site) {
        result_.strands[strand].to = site;
        for (std::uint32_t edge = result_.strands[strand].first; edge != none;
             edge = nextInStrand_[edge]) {
            if (edges_[edge].right != site) {
                outgoing_.push_back(edge);
                if (--splitsLeft_ == 0) {
                    throw holeFaultNear("has too many edges that lie on one another", sites_[site]);
                }
            }
        }
        return edgeOf(strand).right != site;
    }

    /// Makes a strand of the outgoing edges of each direction, and inserts it below `upper`.
    void addStrands(std::uint32_t site, Status::iterator upper) {
        Face face = result_.below.back();
        for (std::size_t i = 0; i < outgoing_.size();) {
            Strand strand{site, none, face, site, outgoing_[i], none};
            rings_.clear();
            const std::uint32_t direction = edges_[outgoing_[i]].right;
            for (; i < outgoing_.size() && side(site, direction, edges_[outgoing_[i]].right) == 0;
                 ++i) {
                const std::uint32_t edge = outgoing_[i];
                nextInStrand_[edge] = strand.first;
                strand.first = edge;
                if (edges_[edge].right > edges_[strand.farthest].right) {
                    strand.farthest = edge;
                }
                if (edges_[edge].ring != SiteEdge::bridge) {
                    rings_.push_back(edges_[edge].ring);
                }
            }
            strand.above = across(face, site);
            if (strand.above == face && face != area) {
                expectOnBoundaryOf(face, strand.first);
            }
            face = strand.above;
            result_.strands.push_back(strand);
            status_.insert(upper, static_cast<std::uint32_t>(result_.strands.size() - 1));
        }
    }

    /// Returns the face above a strand of edges of the rings in `rings_`, given that below it.
    Face across(Face face, std::uint32_t site) {
        if (face != outside) {
            rings_.push_back(0);
            if (face != area) {
                rings_.push_back(face);
            }
        }
        std::sort(rings_.begin(), rings_.end());
        std::size_t count = 0; // of the rings that are left when pairs have cancelled each other
        for (const std::uint32_t ring : rings_) {
            if (count > 0 && rings_[count - 1] == ring) {
                --count;
            } else {
                rings_[count++] = ring;
            }
        }
        if (count == 0) {
            return outside;
        }
        if (rings_[0] != 0) {
            throw holeFaultNear("has a hole, number " + std::to_string(rings_[0]) +
                                    ", that lies outside the outer ring",
                                sites_[site]);
        }
        if (count > 2) {
            throw holeFaultNear("has overlapping holes, numbers " + std::to_string(rings_[1]) +
                                    " and " + std::to_string(rings_[2]) + ",",
                                sites_[site]);
        }
        return count == 1 ? area : rings_[1];
    }

    /// Throws if edges that bound nothing, because a ring passes them twice, lie in a hole or
    /// outside and not on the ring that bounds that face: the points on them would be kept. `edge`
    /// is the first of the list of these edges.
    void expectOnBoundaryOf(Face face, std::uint32_t edge) const {
        const std::uint32_t bounding = face == outside ? 0 : face;
        const std::uint32_t site = edges_[edge].left;
        const std::uint32_t ring = edges_[edge].ring;
        for (; edge != none; edge = nextInStrand_[edge]) {
            if (edges_[edge].ring == bounding || edges_[edge].ring == SiteEdge::bridge) {
                return;
            }
        }
        throw face == outside ? holeFaultNear("has a hole, number " + std::to_string(ring) +
                                                  ", that lies outside the outer ring",
                                              sites_[site])
                              : holeFaultNear("has a hole, number " + std::to_string(face) +
                                                  ", that contains a piece of " + ringName(ring),
                                              sites_[site]);
    }

    /// Throws if the strand `lower` crosses `upper`, which is next to it above. Either may be none.
    void expectNoCrossing(std::uint32_t lower, std::uint32_t upper) const {
        if (lower == none || upper == none) {
            return;
        }
        const std::uint32_t lowEnd = edgeOf(lower).right;
        const std::uint32_t highEnd = edgeOf(upper).right;
        const bool cross = lowEnd < highEnd   ? sideOfStrand(upper, lowEnd) > 0
                           : highEnd < lowEnd ? sideOfStrand(lower, highEnd) < 0
                                              : false;
        expectSound(!cross, lower, upper);
    }

    /// Throws the fault that two strands cross unless `sound`.
    void expectSound(bool sound, std::uint32_t first, std::uint32_t second) const {
        if (sound) {
            return;
        }
        const SiteEdge& a = edgeOf(first);
        const SiteEdge& b = edgeOf(second);
        const auto [ring, hole] = std::minmax(a.ring, b.ring);
        throw holeFaultNear(
            ring == hole
                ? "has a ring, " + ringName(ring) + ", that crosses itself"
                : "has a hole, number " + std::to_string(hole) + ", that crosses " + ringName(ring),
            meetingPoint(sites_[a.left], sites_[a.right], sites_[b.left], sites_[b.right]));
    }

    const std::vector<BoundaryVertex>& sites_;
    const std::vector<SiteEdge>& edges_;
    std::vector<std::uint32_t> nextInStrand_; ///< of each edge: the next one of its strand
    std::size_t splitsLeft_; ///< so that many edges on one another do not take quadratic time
    std::uint32_t nextEdge_ = 0;
    std::vector<std::uint32_t> outgoing_; ///< edges to the right of the current site
    std::vector<std::uint32_t> rings_;
    SweptRings result_;
    Status status_;
};

} // namespace

SweptRings sweepRings(const std::vector<BoundaryVertex>& sites,
                      const std::vector<SiteEdge>& edges) {
    return Sweep(sites, edges).run();
}

} // namespace veldtrim
