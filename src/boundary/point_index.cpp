#include "boundary/point_index.h"

#include "boundary/edge_crossing.h"
#include "boundary/point_index_builder.h"
#include "boundary/point_index_cells.h"
#include "boundary/point_location.h"

namespace veldtrim {

bool PointIndex::isWorthwhile(const std::vector<BoundaryPolygon>& polygons) {
    constexpr std::size_t few = 24;
    std::size_t size = 0;
    for (const BoundaryPolygon& polygon : polygons) {
        size += polygon.vertexIndices.size() + 1;
        if (size > few) {
            return true;
        }
    }
    return false;
}

PointIndex::PointIndex(const std::vector<BoundaryPolygon>& polygons,
                       const std::vector<BoundaryVertex>& vertices) {
    PointIndexBuilder(*this, polygons, vertices).build();
}

bool PointIndex::contains(std::vector<BoundaryPolygon>& polygons,
                          const std::vector<BoundaryVertex>& vertices,
                          const ElevationPoint& point) const {
    if (point.x >= region_.xMin && point.x <= region_.xMax && point.y >= region_.yMin &&
        point.y <= region_.yMax) {
        const auto column = static_cast<std::uint32_t>((point.x - region_.xMin) * xScale_);
        const auto row = static_cast<std::uint32_t>((point.y - region_.yMin) * yScale_);
        unsigned shift = tableShift_;
        cells::Word cell =
            table_[(static_cast<std::size_t>(row >> shift) << tableBits_) + (column >> shift)];
        while ((cell & cells::kindMask) == cells::split) {
            --shift;
            cell = quads_[(cell >> cells::kindBits) + 2 * ((row >> shift) & 1U) +
                          ((column >> shift) & 1U)];
        }
        if (cell == cells::inside ||
            (cell != cells::outside &&
             leafContains(cell >> cells::kindBits, polygons, vertices, point))) {
            return true;
        }
    }
    for (const std::uint32_t number : unindexed_) {
        if (boundsContain(polygons[number], point) &&
            locatePoint(polygons[number], vertices, point) != PointLocation::Outside) {
            return true;
        }
    }
    return false;
}

bool PointIndex::leafContains(std::size_t offset, std::vector<BoundaryPolygon>& polygons,
                              const std::vector<BoundaryVertex>& vertices,
                              const ElevationPoint& point) const {
    const cells::Word* word = &leaves_[offset];
    for (cells::Word groups = *word++; groups > 0; --groups) {
        const cells::Word head = *word++;
        if ((head & cells::groupWhole) != 0) {
            BoundaryPolygon& polygon = polygons[*word++];
            if (boundsContain(polygon, point) &&
                locatePoint(polygon, vertices, point) != PointLocation::Outside) {
                return true;
            }
            continue;
        }
        cells::Word odd = head & cells::groupOdd;
        if ((head & cells::groupQueue) != 0) {
            const cells::Word size = *word++;
            const EdgeEffect effect = queueEffect(word, size, point);
            if (effect == EdgeEffect::Boundary) {
                return true;
            }
            odd ^= static_cast<cells::Word>(effect);
            word += size;
        }
        for (cells::Word edges = head >> cells::groupBits; edges > 0; --edges) {
            const cells::Word edge = *word++;
            const BoundaryVertex* const ends = &ringVertices_[edge >> cells::edgeBits];
            const cells::Word fromBelow = ends[0].y < point.y ? 1 : 0;
            const cells::Word toBelow = ends[1].y < point.y ? 1 : 0;
            odd ^= (edge & fromBelow) ^ ((edge >> 1U) & toBelow);
            const EdgeEffect effect = edgeEffect(ends[0], ends[1], point);
            if (effect == EdgeEffect::Boundary) {
                return true;
            }
            odd ^= static_cast<cells::Word>(effect);
        }
        if (odd != 0) {
            return true;
        }
    }
    return false;
}

EdgeEffect PointIndex::queueEffect(const std::uint32_t* edges, std::size_t size,
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
    return (table_.size() + quads_.size() + leaves_.size() + unindexed_.size()) *
               sizeof(cells::Word) +
           ringVertices_.size() * sizeof(BoundaryVertex);
}

} // namespace veldtrim
