#include "boundary/index/point_index.h"

#include "boundary/index/group.h"

namespace veldtrim {

PointLocation PointIndex::locate(const ElevationPoint& point) const {
    const PointLocation location = locateInCell(cellAt(point), point);
    return location != PointLocation::Outside ? location : locateInUnindexed(point);
}

Cell PointIndex::cellAt(const ElevationPoint& point) const {
    if (!isInRegion(point)) {
        return {};
    }
    const PointPlace place = placeOf(point);
    switch (data_.overview.state(data_.overviewLevel.entryOf(place))) {
    case AreaState::Outside:
        return {};
    case AreaState::Inside:
        return Cell::inside();
    default:
        break;
    }
    unsigned shift = data_.tableLevel.shift;
    Cell cell = *tableEntry(place);
    while (cell.kind() == Cell::Kind::Split) {
        cell = *quarterOf(cell, place, --shift);
    }
    return cell;
}

PointLocation PointIndex::locateInCell(Cell cell, const ElevationPoint& point) const {
    switch (cell.kind()) {
    case Cell::Kind::Inside:
        return PointLocation::Inside;
    case Cell::Kind::Run:
        return locateInRun(cell.run(), point);
    case Cell::Kind::Leaf:
        return locateInLeaf(&data_.leaves[cell.leafPosition()], point);
    default:
        return PointLocation::Outside;
    }
}

PointLocation PointIndex::locateInUnindexed(const ElevationPoint& point) const {
    for (const BoundaryPolygon& polygon : data_.unindexed.polygons) {
        if (boundsContain(polygon, point)) {
            const PointLocation location = locatePoint(polygon, data_.unindexed.vertices, point);
            if (location != PointLocation::Outside) {
                return location;
            }
        }
    }
    return PointLocation::Outside;
}

namespace {

/// Adds the effect of an edge, and its counting ends below the point, to the parity of its ring.
/// Returns false if the point lies on the edge.
bool addEdge(bool& odd, CountingEnds counting, const BoundaryVertex* ends,
             const ElevationPoint& point) {
    const bool fromBelow = ends[0].y < point.y;
    const bool toBelow = ends[1].y < point.y;
    odd = odd != counting.oddBelow(fromBelow, toBelow);
    if (fromBelow == toBelow && ends[0].y != point.y && ends[1].y != point.y) {
        return true; // strictly above or below the point: no effect, and the usual case
    }
    const EdgeEffect effect = edgeEffect(ends[0], ends[1], point);
    odd = odd != (effect == EdgeEffect::Toggle);
    return effect != EdgeEffect::Boundary;
}

} // namespace

PointLocation PointIndex::locateInRun(const Run& run, const ElevationPoint& point) const {
    bool odd = run.odd();
    const BoundaryVertex* ends = endsOf(run.firstEdge());
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (!addEdge(odd, run.ends(i), ends + i, point)) {
            return PointLocation::OnBoundary;
        }
    }
    return odd ? PointLocation::Inside : PointLocation::Outside;
}

PointLocation PointIndex::locateInLeaf(const Word* leaf, const ElevationPoint& point) const {
    for (auto reader = readLeaf(leaf); !reader.atEnd();) {
        const Group group = reader.next();
        if (group.head.isLine()) {
            if (data_.lines[group.number].contains(point)) {
                return PointLocation::OnBoundary;
            }
            continue;
        }
        bool odd = group.head.odd();
        if (group.head.hasQueue()) {
            const EdgeEffect effect = queueEffect(group.queue, point);
            if (effect == EdgeEffect::Boundary) {
                return PointLocation::OnBoundary;
            }
            odd = odd != (effect == EdgeEffect::Toggle);
        }
        for (const IndexEdge edge : group.edges) {
            if (!addEdge(odd, edge.ends(), endsOf(edge.number()), point)) {
                return PointLocation::OnBoundary;
            }
        }
        if (odd) {
            return PointLocation::Inside;
        }
    }
    return PointLocation::Outside;
}

EdgeEffect PointIndex::queueEffect(const EdgeList& queue, const ElevationPoint& point) const {
    const auto distance = [&](std::size_t i) {
        const BoundaryVertex* const ends = endsOf(queue[i].number());
        return crossingAt(ends[0], ends[1], point.y) - point.x;
    };
    // Edges before `low` are left of the point by more than the margin and have no effect.
    std::size_t low = 0;
    for (std::size_t end = queue.size(); low < end;) {
        const std::size_t middle = low + (end - low) / 2;
        if (distance(middle) < -data_.margin) {
            low = middle + 1;
        } else {
            end = middle;
        }
    }
    // All others toggle, except that edges within the margin are tested one by one: rounding errors
    // may have decided their order.
    std::size_t toggles = queue.size() - low;
    for (std::size_t i = low; i < queue.size() && distance(i) <= data_.margin; ++i) {
        const BoundaryVertex* const ends = endsOf(queue[i].number());
        const EdgeEffect effect = crossOrdinaryEdge(ends[0], ends[1], point);
        if (effect == EdgeEffect::Boundary) {
            return effect;
        }
        toggles -= effect == EdgeEffect::None ? 1 : 0;
    }
    return toggles % 2 != 0 ? EdgeEffect::Toggle : EdgeEffect::None;
}

namespace {

template <typename Element>
std::size_t bytesOf(const std::vector<Element>& elements) {
    return elements.size() * sizeof(Element);
}

} // namespace

std::size_t PointIndex::byteSize() const {
    std::size_t bytes = data_.overview.byteSize() + bytesOf(data_.table) + bytesOf(data_.quarters) +
                        bytesOf(data_.leaves) + bytesOf(data_.ringVertices) + bytesOf(data_.lines) +
                        bytesOf(data_.unindexed.polygons) + bytesOf(data_.unindexed.vertices);
    for (const BoundaryPolygon& polygon : data_.unindexed.polygons) {
        bytes += bytesOf(polygon.vertexIndices);
    }
    return bytes;
}

} // namespace veldtrim
