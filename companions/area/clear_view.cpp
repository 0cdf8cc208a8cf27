#include "area/clear_view.h"

#include "area/exact_side.h"

#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace veldtrim {

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;

using BoundedEdge = std::pair<Box, SiteEdge>;

Box boundsOf(const BoundaryVertex& a, const BoundaryVertex& b) {
    return {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
}

std::vector<BoundedEdge> boundedEdges(const std::vector<BoundaryVertex>& sites,
                                      const std::vector<SiteEdge>& edges) {
    std::vector<BoundedEdge> bounded;
    bounded.reserve(edges.size());
    for (const SiteEdge& edge : edges) {
        bounded.emplace_back(boundsOf(sites[edge.left], sites[edge.right]), edge);
    }
    return bounded;
}

} // namespace

class ClearView::Tree : public bgi::rtree<BoundedEdge, bgi::linear<16>> {
public:
    using rtree::rtree;
};

ClearView::ClearView(const std::vector<BoundaryVertex>& sites, const std::vector<SiteEdge>& edges,
                     const SweptRings& swept)
    : sites_(sites), swept_(swept), tree_(std::make_unique<Tree>(boundedEdges(sites, edges))) {}

ClearView::~ClearView() = default;

ClearView::Start ClearView::startOf(std::uint32_t left, std::uint32_t right) const {
    const auto begin = swept_.strands.begin() + swept_.firstStrand[left];
    const auto end = swept_.strands.begin() + swept_.firstStrand[left + 1];
    const auto sideOfStrand = [&](const Strand& strand) {
        return sideOf(sites_[left], sites_[strand.to], sites_[right]);
    };
    const auto notBelow = std::partition_point(
        begin, end, [&](const Strand& strand) { return sideOfStrand(strand) > 0; });
    if (notBelow != end && sideOfStrand(*notBelow) == 0) {
        return notBelow->to == right ? Start::OnEdge : Start::Blocked;
    }
    const Face face = notBelow == begin ? swept_.below[left] : std::prev(notBelow)->above;
    return face == area ? Start::InArea : Start::Blocked;
}

bool ClearView::touches(const SiteEdge& edge, std::uint32_t left, std::uint32_t right) const {
    const int leftSide = sideOf(sites_[left], sites_[right], sites_[edge.left]);
    const int rightSide = sideOf(sites_[left], sites_[right], sites_[edge.right]);
    if ((leftSide == 0 && left < edge.left && edge.left < right) ||
        (rightSide == 0 && left < edge.right && edge.right < right)) {
        return true;
    }
    // The bridge starts and ends at sites and does not begin along an edge. So if the edge only
    // reaches its line, it does so outside the bridge or at one of its ends.
    return leftSide * rightSide < 0 &&
           sideOf(sites_[edge.left], sites_[edge.right], sites_[left]) *
                   sideOf(sites_[edge.left], sites_[edge.right], sites_[right]) <
               0;
}

bool ClearView::isClear(std::uint32_t from, std::uint32_t to, std::size_t& work) const {
    const auto [left, right] = std::minmax(from, to);
    const Start start = startOf(left, right);
    work += 4;
    if (start != Start::InArea) {
        return start == Start::OnEdge;
    }
    const Box box = boundsOf(sites_[left], sites_[right]);
    for (auto found = tree_->qbegin(bgi::intersects(box)); found != tree_->qend(); ++found) {
        ++work;
        if (touches(found->second, left, right)) {
            return false;
        }
    }
    return true;
}

void ClearView::addBridge(std::uint32_t from, std::uint32_t to) {
    const auto [left, right] = std::minmax(from, to);
    tree_->insert({boundsOf(sites_[left], sites_[right]), {left, right, SiteEdge::bridge}});
}

} // namespace veldtrim
