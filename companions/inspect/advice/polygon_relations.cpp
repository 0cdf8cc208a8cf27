#include "inspect/advice/polygon_relations.h"

#include "explain/wording.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <utility>

namespace veldtrim {

namespace {

class Relations {
public:
    Relations(const BoundaryModel& model, PolygonFinder& finder,
              const std::vector<std::int32_t>& ids)
        : polygons_(model.polygons()), vertices_(model.vertices()), finder_(finder), ids_(ids) {}

    std::vector<PolygonRemark> find() {
        for (std::size_t i = 0; i < polygons_.size(); ++i) {
            if (polygons_[i].vertexIndices.size() > 2) {
                remarkOnEnclosing(i);
            }
        }
        remarkOnSharedEdges();
        return std::move(remarks_);
    }

private:
    [[nodiscard]] const BoundaryVertex& vertex(const BoundaryPolygon& polygon,
                                               std::size_t i) const {
        return vertices_[static_cast<std::size_t>(polygon.vertexIndices[i])];
    }

    [[nodiscard]] std::string name(std::size_t polygon) const {
        return "polygon " + std::to_string(ids_[polygon]);
    }

    /// Whether no vertex of `inner` is outside `outer`, and at least one is inside.
    bool encloses(std::uint32_t outer, const BoundaryPolygon& inner) {
        bool isInside = false;
        for (std::size_t i = 0; i < inner.vertexIndices.size() && budget_ > 0; ++i, --budget_) {
            const BoundaryVertex& corner = vertex(inner, i);
            const PointLocation location = finder_.locate(outer, {corner.x, corner.y});
            if (location == PointLocation::Outside) {
                return false;
            }
            isInside = isInside || location == PointLocation::Inside;
        }
        return isInside && budget_ > 0;
    }

    void remarkOnEnclosing(std::size_t i) {
        const BoundaryPolygon& inner = polygons_[i];
        const BoundaryVertex& first = vertex(inner, 0);
        for (const std::uint32_t outer : finder_.candidates({first.x, first.y})) {
            if (budget_ == 0) {
                return;
            }
            --budget_;
            if (outer != i && polygons_[outer].bounds.contains(inner.bounds) &&
                encloses(outer, inner)) {
                remarks_.push_back(
                    {i,
                     "it lies inside " + name(outer) +
                         ", and no hole is cut: its points are kept anyway. For a hole, draw one "
                         "ring instead: the outer ring, back to its first vertex, along a bridge "
                         "to the hole, around the hole, and back along the bridge; horizontal "
                         "and vertical bridges are exact"});
                return;
            }
        }
    }

    struct Edge {
        std::array<double, 4> ends; ///< x and y of the left end, then of the right end
        std::size_t polygon;

        bool operator<(const Edge& other) const {
            return ends != other.ends ? ends < other.ends : polygon < other.polygon;
        }
    };

    /// The edge from vertex i of the polygon if it is neither horizontal nor vertical.
    [[nodiscard]] std::optional<Edge> slantedEdge(std::size_t polygon, std::size_t i) const {
        const BoundaryPolygon& ring = polygons_[polygon];
        const BoundaryVertex& a = vertex(ring, i);
        const BoundaryVertex& b = vertex(ring, (i + 1) % ring.vertexIndices.size());
        if (a.x == b.x || a.y == b.y) {
            return std::nullopt;
        }
        return a.x < b.x ? Edge{{a.x, a.y, b.x, b.y}, polygon}
                         : Edge{{b.x, b.y, a.x, a.y}, polygon};
    }

    void remarkOnSharedEdges() {
        constexpr std::size_t mostVertices = 5'000'000;
        if (polygons_.size() < 2 || vertices_.size() > mostVertices) {
            return;
        }
        std::vector<Edge> edges;
        for (std::size_t polygon = 0; polygon < polygons_.size(); ++polygon) {
            for (std::size_t i = 0; i < polygons_[polygon].vertexIndices.size(); ++i) {
                if (const std::optional<Edge> edge = slantedEdge(polygon, i)) {
                    edges.push_back(*edge);
                }
            }
        }
        std::sort(edges.begin(), edges.end());
        std::set<std::pair<std::size_t, std::size_t>> seen;
        for (std::size_t i = 1; i < edges.size(); ++i) {
            const Edge& edge = edges[i];
            const std::pair pair{edges[i - 1].polygon, edge.polygon};
            if (edges[i - 1].ends == edge.ends && pair.first != pair.second &&
                seen.insert(pair).second) {
                remarkOnSharedEdge(pair.first, edge);
            }
        }
    }

    void remarkOnSharedEdge(std::size_t other, const Edge& edge) {
        remarks_.push_back(
            {edge.polygon,
             "it shares the slanted edge from (" + coordinate(edge.ends[0]) + ", " +
                 coordinate(edge.ends[1]) + ") to (" + coordinate(edge.ends[2]) + ", " +
                 coordinate(edge.ends[3]) + ") with " + name(other) +
                 ": a few of the points exactly on it may be in neither polygon. Where that "
                 "matters, cut the area along horizontal and vertical lines"});
    }

    const std::vector<BoundaryPolygon>& polygons_;
    const std::vector<BoundaryVertex>& vertices_;
    PolygonFinder& finder_;
    const std::vector<std::int32_t>& ids_;
    std::size_t budget_ = 20'000'000; ///< remaining comparisons
    std::vector<PolygonRemark> remarks_;
};

} // namespace

std::vector<PolygonRemark> remarksOnRelations(const BoundaryModel& model, PolygonFinder& finder,
                                              const std::vector<std::int32_t>& ids) {
    return Relations(model, finder, ids).find();
}

} // namespace veldtrim
