#include "area/bridge_search.h"

#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/geometry/strategies/strategies.hpp>

#include <algorithm>
#include <iterator>
#include <queue>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace veldtrim {

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

using Point = bg::model::point<double, 2, bg::cs::cartesian>;

using PlacedSite = std::pair<Point, std::uint32_t>;

Point placeOf(const BoundaryVertex& vertex) {
    return {vertex.x, vertex.y};
}

} // namespace

class BridgeSearch::Tree : public bgi::rtree<PlacedSite, bgi::linear<16>> {
public:
    using rtree::rtree;
};

BridgeSearch::BridgeSearch(const std::vector<BoundaryVertex>& sites, const ClearView& view)
    : sites_(sites), view_(view), tree_(std::make_unique<Tree>()) {}

BridgeSearch::~BridgeSearch() = default;

void BridgeSearch::addTargets(const std::vector<std::uint32_t>& targets) {
    std::vector<PlacedSite> placed;
    placed.reserve(targets.size());
    for (const std::uint32_t target : targets) {
        placed.emplace_back(placeOf(sites_[target]), target);
    }
    if (tree_->empty()) {
        tree_ = std::make_unique<Tree>(placed); // packs them, which is faster
    } else {
        tree_->insert(placed);
    }
}

std::vector<BridgeSearch::Pair> BridgeSearch::nearest(std::uint32_t from, std::size_t count) const {
    std::vector<PlacedSite> found;
    tree_->query(bgi::nearest(placeOf(sites_[from]), static_cast<unsigned>(count)),
                 std::back_inserter(found));
    std::vector<Pair> pairs;
    for (const auto& [place, to] : found) {
        const double dx = sites_[to].x - sites_[from].x;
        const double dy = sites_[to].y - sites_[from].y;
        pairs.push_back({dx * dx + dy * dy, from, to});
    }
    std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
        return std::tie(a.squaredLength, a.to) < std::tie(b.squaredLength, b.to);
    });
    return pairs;
}

std::optional<Bridge> BridgeSearch::shortest(const std::vector<std::uint32_t>& starts,
                                             std::size_t& work, std::size_t mostWork) const {
    const auto isLater = [](const Pair& a, const Pair& b) {
        return std::tie(a.squaredLength, a.from, a.to) > std::tie(b.squaredLength, b.from, b.to);
    };
    std::vector<Pair> first;
    for (const std::uint32_t start : starts) {
        work += 4;
        if (work > mostWork) {
            return std::nullopt;
        }
        first.push_back(nearest(start, 1).front());
    }
    std::priority_queue<Pair, std::vector<Pair>, decltype(isLater)> queue(isLater,
                                                                          std::move(first));
    struct Reach {
        std::vector<Pair> pairs; ///< of one start, the nearest ones
        std::size_t tried = 0;
    };
    std::unordered_map<std::uint32_t, Reach> reaches;
    while (!queue.empty() && work <= mostWork) {
        const Pair pair = queue.top();
        queue.pop();
        if (view_.isClear(pair.from, pair.to, work)) {
            return Bridge{pair.from, pair.to};
        }
        Reach& reach = reaches[pair.from];
        if (reach.tried == reach.pairs.size() && reach.tried < tree_->size()) {
            // Asks for more and begins anew, as the order of equally near ones may differ.
            reach.pairs = nearest(pair.from, std::max<std::size_t>(8, 4 * reach.pairs.size()));
            reach.tried = 0;
            work += 2 * reach.pairs.size();
        }
        if (reach.tried < reach.pairs.size()) {
            queue.push(reach.pairs[reach.tried++]);
        }
    }
    return std::nullopt;
}

} // namespace veldtrim
