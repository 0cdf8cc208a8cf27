#include "boundary/index/cell_splitter.h"

#include "boundary/edge_crossing.h"

#include <algorithm>
#include <cstddef>

namespace veldtrim {

namespace {

/// An edge that rises less is taken to have its whole width at every height, because the quotient
/// that locates a crossing could underflow.
constexpr double smallestRise = 1e-140;

struct Interval {
    double low;
    double high;
};

/// Returns the x range of the part of an edge between two heights.
Interval clip(const BoundaryVertex* ends, double yLow, double yHigh) {
    const bool rises = ends[0].y < ends[1].y;
    const BoundaryVertex& lower = ends[rises ? 0 : 1];
    const BoundaryVertex& upper = ends[rises ? 1 : 0];
    double atLow = lower.x;
    double atHigh = upper.x;
    const double rise = upper.y - lower.y;
    if (rise >= smallestRise && (lower.y < yLow || upper.y > yHigh)) {
        const double slope = (upper.x - lower.x) / rise;
        if (lower.y < yLow) {
            atLow = lower.x + (yLow - lower.y) * slope;
        }
        if (upper.y > yHigh) {
            atHigh = lower.x + (yHigh - lower.y) * slope;
        }
    }
    return {std::min(atLow, atHigh), std::max(atLow, atHigh)};
}

/// Whether the number of counting ends below the height `y` is odd.
bool oddBelow(CountingEnds counting, const BoundaryVertex* ends, double y) {
    return counting.oddBelow(ends[0].y < y, ends[1].y < y);
}

} // namespace

void CellSplitter::split(const GroupList& groups, Quarters& quarters) const {
    for (auto reader = groups.read(); !reader.atEnd();) {
        const Group group = reader.next();
        Quarter* const only = onlyQuarterOf(group, quarters);
        if (only != nullptr) {
            only->groups.append(group);
        } else {
            splitGroup(group, quarters);
        }
    }
}

/// Returns the only quarter near the ring's bounds, or null if there is not exactly one.
///
/// That quarter can take over the group unchanged, because a group that is valid for all points of
/// a cell is valid for any part of the cell. All points of the other quarters are outside.
Quarter* CellSplitter::onlyQuarterOf(const Group& group, Quarters& quarters) const {
    if (group.head.isLine()) {
        return nullptr; // may contain points slightly outside its bounds
    }
    const BoundingBox near = polygons_[group.number].bounds.widenedBy(margin_);
    Quarter* only = nullptr;
    for (Quarter& quarter : quarters) {
        if (near.overlaps(quarter.box)) {
            if (only != nullptr) {
                return nullptr;
            }
            only = &quarter;
        }
    }
    return only;
}

void CellSplitter::splitGroup(const Group& group, Quarters& quarters) const {
    for (Quarter& quarter : quarters) {
        quarter.groups.open(group.number);
        quarter.odd = group.head.odd();
    }
    for (const IndexEdge edge : group.edges) {
        splitEdge(edge, quarters);
    }
    for (Quarter& quarter : quarters) {
        const std::size_t edges = quarter.groups.openEdges();
        if (edges != 0) {
            quarter.groups.close(group.head.isLine() ? GroupHead::ofLine(edges)
                                                     : GroupHead::ofRing(edges, quarter.odd));
        } else {
            quarter.groups.drop();
            quarter.isFilled = quarter.isFilled || (!group.head.isLine() && quarter.odd);
        }
    }
}

/// Adds the edge to the open group of each quarter: to the edges if it comes near the quarter, else
/// to the parity.
void CellSplitter::splitEdge(IndexEdge edge, Quarters& quarters) const {
    const BoundaryVertex* const ends = &ringVertices_[edge.number()];
    const double lowest = std::min(ends[0].y, ends[1].y);
    const double highest = std::max(ends[0].y, ends[1].y);
    for (std::size_t row = 0; row < 2; ++row) {
        Quarter* const rowQuarters = &quarters[2 * row];
        const double yLow = rowQuarters[0].box.yMin - margin_;
        const double yHigh = rowQuarters[0].box.yMax + margin_;
        const double yCentre = rowQuarters[0].yCentre;
        const bool counted = oddBelow(edge.ends(), ends, yCentre);
        if (highest < yLow || lowest > yHigh) {
            rowQuarters[0].odd = rowQuarters[0].odd != counted;
            rowQuarters[1].odd = rowQuarters[1].odd != counted;
            continue;
        }
        const Interval reach = clip(ends, yLow, yHigh);
        for (std::size_t column = 0; column < 2; ++column) {
            Quarter& quarter = rowQuarters[column];
            quarter.odd = quarter.odd != counted;
            if (reach.low - margin_ > quarter.box.xMax || reach.high + margin_ < quarter.box.xMin) {
                const ElevationPoint centre{quarter.xCentre, yCentre};
                const bool toggles = edgeEffect(ends[0], ends[1], centre) == EdgeEffect::Toggle;
                quarter.odd = quarter.odd != toggles;
                continue;
            }
            const auto counts = [&](const BoundaryVertex& end) {
                return end.x > quarter.xCentre && end.y >= yLow && end.y <= yHigh;
            };
            const CountingEnds counting(counts(ends[0]), counts(ends[1]));
            quarter.groups.add(IndexEdge(edge.number(), counting));
            quarter.odd = quarter.odd != oddBelow(counting, ends, yCentre);
        }
    }
}

} // namespace veldtrim
