#include "boundary/index/point_index.h"

#include "boundary/edge_crossing.h"
#include "boundary/index/point_index_builder.h"
#include "boundary/index/point_index_cells.h"
#include "boundary/ring.h"

namespace veldtrim {

PointIndex::PointIndex(const std::vector<BoundaryPolygon>& polygons,
                       const std::vector<BoundaryVertex>& vertices) {
    PointIndexBuilder(*this, polygons, vertices).build();
}

PointLocation PointIndex::locate(std::vector<BoundaryPolygon>& polygons,
                                 const std::vector<BoundaryVertex>& vertices,
                                 const ElevationPoint& point) const {
    const PointLocation location = locateInCell(cellAt(point), polygons, vertices, point);
    return location != PointLocation::Outside ? location
                                              : locateInUnindexed(polygons, vertices, point);
}

cells::Cell PointIndex::cellAt(const ElevationPoint& point) const {
    if (!isInRegion(point)) {
        return cells::outside;
    }
    const Place place = placeOf(point);
    const unsigned state = overviewState(overviewEntry(place));
    if (state != cells::mixed) {
        return state;
    }
    unsigned shift = tableShift_;
    cells::Cell cell = *tableEntry(place);
    while ((cell & cells::kindMask) == cells::split) {
        cell = *quarterOf(cell, place, --shift);
    }
    return cell;
}

PointLocation PointIndex::locateInCell(cells::Cell cell, std::vector<BoundaryPolygon>& polygons,
                                       const std::vector<BoundaryVertex>& vertices,
                                       const ElevationPoint& point) const {
    switch (cell & cells::kindMask) {
    case cells::inside:
        return PointLocation::Inside;
    case cells::run:
        return locateInRun(cell, point);
    case cells::leaf:
        return locateInLeaf(&leaves_[cell >> cells::kindBits], polygons, vertices, point);
    default:
        return PointLocation::Outside;
    }
}

PointLocation PointIndex::locateInUnindexed(std::vector<BoundaryPolygon>& polygons,
                                            const std::vector<BoundaryVertex>& vertices,
                                            const ElevationPoint& point) const {
    for (const std::uint32_t number : unindexed_) {
        if (boundsContain(polygons[number], point)) {
            const PointLocation location = locatePoint(polygons[number], vertices, point);
            if (location != PointLocation::Outside) {
                return location;
            }
        }
    }
    return PointLocation::Outside;
}

namespace {

/// Adds an edge to the parity of its ring at the point: its effect, and the ends that count.
/// Returns false when the edge holds the point.
bool addEdge(cells::Word& odd, cells::Word countingEnds, const BoundaryVertex* ends,
             const ElevationPoint& point) {
    const cells::Word fromBelow = ends[0].y < point.y ? 1U : 0U;
    const cells::Word toBelow = ends[1].y < point.y ? 1U : 0U;
    odd ^= (countingEnds & fromBelow) ^ (countingEnds >> 1U & toBelow);
    if (fromBelow == toBelow && ends[0].y != point.y && ends[1].y != point.y) {
        return true; // strictly on one side: no effect, and the usual case among many edges
    }
    const EdgeEffect effect = edgeEffect(ends[0], ends[1], point);
    odd ^= static_cast<cells::Word>(effect);
    return effect != EdgeEffect::Boundary;
}

/// Whether a segment or a flat polygon holds the point. A flat polygon, however many vertices it
/// has, holds all points of its height that pass the pretest, and no others.
bool wholeContains(BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices,
                   const ElevationPoint& point) {
    if (!boundsContain(polygon, point)) {
        return false;
    }
    if (Ring(polygon, vertices).size() > 2) {
        return point.y == polygon.bounds.yMin;
    }
    return locatePoint(polygon, vertices, point) != PointLocation::Outside;
}

} // namespace

PointLocation PointIndex::locateInRun(cells::Cell run, const ElevationPoint& point) const {
    auto odd = static_cast<cells::Word>(run >> cells::runOddShift);
    auto countingEnds = static_cast<cells::Word>(run >> cells::runEndsShift);
    const BoundaryVertex* ends = &ringVertices_[run >> cells::runEdgeShift];
    for (auto size = run >> cells::runSizeShift & cells::runSizeMask; size > 0; --size) {
        if (!addEdge(odd, countingEnds & cells::endsMask, ends, point)) {
            return PointLocation::OnBoundary;
        }
        countingEnds >>= cells::edgeBits;
        ++ends;
    }
    return (odd & 1U) != 0 ? PointLocation::Inside : PointLocation::Outside;
}

PointLocation PointIndex::locateInLeaf(const cells::Word* word,
                                       std::vector<BoundaryPolygon>& polygons,
                                       const std::vector<BoundaryVertex>& vertices,
                                       const ElevationPoint& point) const {
    for (cells::Word groups = *word++; groups > 0; --groups) {
        const cells::Word head = *word++;
        if ((head & cells::groupWhole) != 0) {
            if (wholeContains(polygons[*word++], vertices, point)) {
                return PointLocation::OnBoundary;
            }
            continue;
        }
        cells::Word odd = head & cells::groupOdd;
        if ((head & cells::groupQueue) != 0) {
            const cells::Word size = *word++;
            const EdgeEffect effect = queueEffect(word, size, point);
            if (effect == EdgeEffect::Boundary) {
                return PointLocation::OnBoundary;
            }
            odd ^= static_cast<cells::Word>(effect);
            word += size;
        }
        for (cells::Word edges = head >> cells::groupBits; edges > 0; --edges) {
            const cells::Word edge = *word++;
            if (!addEdge(odd, edge & cells::endsMask, &ringVertices_[edge >> cells::edgeBits],
                         point)) {
                return PointLocation::OnBoundary;
            }
        }
        if ((odd & 1U) != 0) {
            return PointLocation::Inside;
        }
    }
    return PointLocation::Outside;
}

EdgeEffect PointIndex::queueEffect(const cells::Word* edges, std::size_t size,
                                   const ElevationPoint& point) const {
    const auto distance = [&](std::size_t i) {
        const BoundaryVertex* const ends = &ringVertices_[edges[i] >> cells::edgeBits];
        return crossingAt(ends[0], ends[1], point.y) - point.x;
    };
    // Edges before `low` are left of the point with the margin to spare: they have no effect.
    std::size_t low = 0;
    for (std::size_t end = size; low < end;) {
        const std::size_t middle = low + (end - low) / 2;
        if (distance(middle) < -margin_) {
            low = middle + 1;
        } else {
            end = middle;
        }
    }
    // All others toggle, but for those that are so close to the point that each must speak for
    // itself: their order may be one of rounding errors.
    std::size_t toggles = size - low;
    for (std::size_t i = low; i < size && distance(i) <= margin_; ++i) {
        const BoundaryVertex* const ends = &ringVertices_[edges[i] >> cells::edgeBits];
        const EdgeEffect effect = crossOrdinaryEdge(ends[0], ends[1], point);
        if (effect == EdgeEffect::Boundary) {
            return effect;
        }
        toggles -= effect == EdgeEffect::None ? 1 : 0;
    }
    return toggles % 2 != 0 ? EdgeEffect::Toggle : EdgeEffect::None;
}

std::size_t PointIndex::byteSize() const {
    return (table_.size() + quads_.size()) * sizeof(cells::Cell) + overview_.size() +
           (leaves_.size() + unindexed_.size()) * sizeof(cells::Word) +
           ringVertices_.size() * sizeof(BoundaryVertex);
}

} // namespace veldtrim
