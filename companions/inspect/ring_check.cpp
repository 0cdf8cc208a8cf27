#include "inspect/ring_check.h"

#include "boundary/ring.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace veldtrim {

namespace {

/// Returns twice the signed area of the triangle a, b, c. The sign tells on which side of the line
/// from a to b the vertex c lies.
double side(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool areOpposite(double a, double b) {
    return (a > 0.0 && b < 0.0) || (a < 0.0 && b > 0.0);
}

/// Whether each edge has its ends on opposite sides of the other. Edges that only touch do not
/// cross.
bool cross(const BoundaryVertex& a, const BoundaryVertex& b, const BoundaryVertex& c,
           const BoundaryVertex& d) {
    return areOpposite(side(a, b, c), side(a, b, d)) && areOpposite(side(c, d, a), side(c, d, b));
}

struct Crossing {
    std::size_t first = 0; ///< positions of the two edges in the ring
    std::size_t second = 0;
    bool exhausted = false; ///< none was found before the search was given up
};

/// Returns the first crossing found. Sorts the edges by their smallest x and compares each with
/// those that begin before it ends.
std::optional<Crossing> findCrossing(const Ring& ring) {
    constexpr std::size_t mostComparisons = 50'000'000;
    struct Edge {
        double xMin;
        double xMax;
        double yMin;
        double yMax;
        std::size_t place;
    };
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& a = ring.vertex(i);
        const BoundaryVertex& b = ring.vertex((i + 1) % ring.size());
        edges.push_back(
            {std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y), i});
    }
    std::sort(edges.begin(), edges.end(),
              [](const Edge& a, const Edge& b) { return a.xMin < b.xMin; });
    std::size_t comparisons = 0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const BoundaryVertex& a = ring.vertex(edges[i].place);
        const BoundaryVertex& b = ring.vertex((edges[i].place + 1) % ring.size());
        for (std::size_t j = i + 1; j < edges.size() && edges[j].xMin <= edges[i].xMax; ++j) {
            if (++comparisons > mostComparisons) {
                return Crossing{0, 0, true};
            }
            if (edges[j].yMin > edges[i].yMax || edges[j].yMax < edges[i].yMin) {
                continue;
            }
            if (cross(a, b, ring.vertex(edges[j].place),
                      ring.vertex((edges[j].place + 1) % ring.size()))) {
                const auto [first, second] = std::minmax(edges[i].place, edges[j].place);
                return Crossing{first, second, false};
            }
        }
    }
    return std::nullopt;
}

bool hasFiniteVertices(const Ring& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (!std::isfinite(ring.vertex(i).x) || !std::isfinite(ring.vertex(i).y)) {
            return false;
        }
    }
    return true;
}

bool isFlat(const Ring& ring) {
    const BoundaryVertex& a = ring.vertex(0);
    std::size_t other = 1;
    while (other < ring.size() && ring.vertex(other).x == a.x && ring.vertex(other).y == a.y) {
        ++other;
    }
    for (std::size_t i = other + 1; i < ring.size(); ++i) {
        if (side(a, ring.vertex(other), ring.vertex(i)) != 0.0) {
            return false;
        }
    }
    return true;
}

} // namespace

double areaOf(const BoundaryPolygon& polygon, const std::vector<BoundaryVertex>& vertices) {
    const Ring ring(polygon, vertices);
    double doubled = 0.0;
    for (std::size_t i = 2; i < ring.size(); ++i) {
        doubled += side(ring.vertex(0), ring.vertex(i - 1), ring.vertex(i));
    }
    return std::fabs(doubled) / 2.0;
}

std::vector<std::string> remarksOn(const BoundaryPolygon& polygon,
                                   const std::vector<BoundaryVertex>& vertices) {
    if (polygon.vertexIndices.empty()) {
        return {"it has no vertices, so it holds nothing"};
    }
    const Ring ring(polygon, vertices);
    if (ring.size() < 2) {
        return {"it has fewer than two vertices, so it holds nothing"};
    }
    if (!hasFiniteVertices(ring)) {
        return {"it has coordinates that are not finite numbers"};
    }
    if (isFlat(ring)) {
        return {"it is flat: it holds only the points that lie exactly on its line"};
    }
    const std::optional<Crossing> crossing = findCrossing(ring);
    if (!crossing) {
        return {};
    }
    if (crossing->exhausted) {
        return {"it is too intricate to search it completely for crossings; none was found so far"};
    }
    return {"it crosses itself: the edges after vertices " + std::to_string(crossing->first + 1) +
            " and " + std::to_string(crossing->second + 1) +
            " cross; parts that it goes round twice count as outside"};
}

} // namespace veldtrim
