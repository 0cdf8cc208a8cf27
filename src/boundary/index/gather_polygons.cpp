#include "boundary/index/gather_polygons.h"

#include "boundary/ring.h"
#include "geometry/tolerance.h"

#include <cmath>
#include <cstddef>

namespace veldtrim {

namespace {

/// How far beyond its ends a flat polygon contains points: the tolerance of boundsContain, and a
/// little more for rounding.
constexpr double flatReach = 1.0001 * pretestTolerance;

/// Whether cells can replace the polygon's pretest: its bounds are exactly those of its vertices,
/// and all coordinates are finite and not huge.
bool isIndexable(const Ring& ring, const BoundingBox& bounds) {
    BoundingBox actual = BoundingBox::empty();
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& vertex = ring.vertex(i);
        if (!(std::abs(vertex.x) <= largestCoordinate && std::abs(vertex.y) <= largestCoordinate)) {
            return false;
        }
        actual.add(vertex.x, vertex.y);
    }
    return bounds.xMin == actual.xMin && bounds.xMax == actual.xMax && bounds.yMin == actual.yMin &&
           bounds.yMax == actual.yMax;
}

/// Adds edges to the groups, and their ends to the ring vertices.
class Gatherer {
public:
    Gatherer(PointIndexData& data, GatheredPolygons& gathered) : data_(data), gathered_(gathered) {}

    void addRing(const Ring& ring, Word number) {
        gathered_.groups.open(number);
        for (std::size_t i = 0; i < ring.size(); ++i) {
            addEdgeFrom(ring.vertex(i));
        }
        addVertex(ring.vertex(0));
        gathered_.groups.close(GroupHead::ofRing(ring.size(), false));
    }

    /// Adds a line that contains points only near the edge from `from` to `to`.
    void addLine(const LinePolygon& line, const BoundaryVertex& from, const BoundaryVertex& to) {
        gathered_.groups.open(static_cast<Word>(data_.lines.size()));
        addEdgeFrom(from);
        addVertex(to);
        gathered_.groups.close(GroupHead::ofLine(1));
        data_.lines.push_back(line);
    }

private:
    void addEdgeFrom(const BoundaryVertex& vertex) {
        gathered_.groups.add(IndexEdge(static_cast<Word>(data_.ringVertices.size())));
        addVertex(vertex);
    }

    void addVertex(const BoundaryVertex& vertex) {
        data_.ringVertices.push_back(vertex);
        gathered_.box.add(vertex.x, vertex.y);
    }

    PointIndexData& data_;
    GatheredPolygons& gathered_;
};

} // namespace

void PolygonCopies::add(const BoundaryPolygon& polygon,
                        const std::vector<BoundaryVertex>& polygonVertices) {
    const Ring ring(polygon, polygonVertices);
    BoundaryPolygon copy;
    copy.bounds = polygon.bounds;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        copy.vertexIndices.push_back(static_cast<std::int32_t>(vertices.size()));
        vertices.push_back(ring.vertex(i));
    }
    if (ring.size() < polygon.vertexIndices.size()) {
        copy.vertexIndices.push_back(copy.vertexIndices.front());
    }
    polygons.push_back(copy);
}

GatheredPolygons gatherPolygons(std::span<const BoundaryPolygon> polygons,
                                const std::vector<BoundaryVertex>& vertices, PointIndexData& data) {
    std::size_t vertexCount = 0;
    for (const BoundaryPolygon& polygon : polygons) {
        vertexCount += polygon.vertexIndices.size();
    }
    GatheredPolygons gathered;
    data.ringVertices.reserve(vertexCount + 2 * polygons.size());
    gathered.groups.reserve(vertexCount + 3 * polygons.size());
    Gatherer gatherer(data, gathered);
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        const BoundaryPolygon& polygon = polygons[i];
        const BoundingBox& bounds = polygon.bounds;
        const Ring ring(polygon, vertices);
        if (ring.size() < 2) {
            continue; // contains no point
        }
        if (!isIndexable(ring, bounds)) {
            data.unindexed.add(polygon, vertices);
        } else if (ring.size() == 2) {
            const BoundaryVertex& from = ring.vertex(0);
            const BoundaryVertex& to = ring.vertex(1);
            gatherer.addLine({bounds, {from, to}, false}, from, to);
        } else if (bounds.yMin == bounds.yMax) {
            const BoundaryVertex from{bounds.xMin - flatReach, bounds.yMin};
            const BoundaryVertex to{bounds.xMax + flatReach, bounds.yMin};
            gatherer.addLine({bounds, {from, to}, true}, from, to);
        } else {
            gatherer.addRing(ring, static_cast<Word>(i));
        }
    }
    return gathered;
}

} // namespace veldtrim
