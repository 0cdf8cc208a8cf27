/// Random polygons with holes whose coordinates are integers.
#pragma once

#include "judges/holed_polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace veldtrim::test {

class HoledPolygonGenerator {
public:
    explicit HoledPolygonGenerator(unsigned seed) : random_(seed) {}

    /// Rings of `size` or less to each side of the origin, the outer one first. No ring crosses
    /// itself. Two rings have nothing or one vertex in common. There may be fewer holes.
    std::vector<Ring> polygon(double size, std::size_t holes) {
        std::vector<Ring> rings;
        while (rings.empty()) {
            const Ring outer = ring(size);
            if (isSimple(outer)) {
                rings.push_back(outer);
            }
        }
        for (std::size_t attempts = 20 * holes; attempts > 0 && rings.size() <= holes; --attempts) {
            Ring hole = ring(size * uniform(0.02, 0.5));
            const Ring& neighbour = rings[below(rings.size())];
            const BoundaryVertex at = below(3) == 0 ? neighbour[below(neighbour.size())]
                                                    : BoundaryVertex{integer(size), integer(size)};
            const BoundaryVertex from = hole[below(hole.size())];
            for (BoundaryVertex& vertex : hole) {
                vertex = {vertex.x + at.x - from.x, vertex.y + at.y - from.y};
            }
            if (isSimple(hole) && fits(hole, rings)) {
                rings.push_back(hole);
            }
        }
        return rings;
    }

    /// A ring of any kind on a grid of a few points: it may cross, touch and repeat itself.
    Ring tangle(std::size_t most, double spacing, std::size_t size) {
        Ring ring(3 + below(size));
        for (BoundaryVertex& vertex : ring) {
            vertex = {spacing * static_cast<double>(below(most + 1)),
                      spacing * static_cast<double>(below(most + 1))};
        }
        return ring;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    double uniform(double from, double to) {
        return from + (to - from) * (static_cast<double>(random_()) / 4294967296.0);
    }
    /// An integer up to `size` to either side of 0.
    double integer(double size) { return std::round(uniform(-size, size)); }

private:
    Ring ring(double size) {
        Ring ring;
        switch (below(3)) {
        case 0:
            ring = star(5 + below(20), size);
            break;
        case 1:
            ring = comb(1 + below(8), size);
            break;
        default:
            ring = spiral(8 + below(14), size);
        }
        const bool turned = below(2) == 0;
        const double mirrored = below(2) == 0 ? -1 : 1;
        for (BoundaryVertex& vertex : ring) {
            vertex = {mirrored * std::round(vertex.x), std::round(vertex.y)};
            if (turned) {
                std::swap(vertex.x, vertex.y);
            }
        }
        std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(below(ring.size())),
                    ring.end());
        return ring;
    }

    static BoundaryVertex atAngle(double turns, double radius) {
        return {radius * std::cos(2 * std::numbers::pi * turns),
                radius * std::sin(2 * std::numbers::pi * turns)};
    }

    Ring star(std::size_t corners, double size) {
        Ring ring;
        for (std::size_t i = 0; i < corners; ++i) {
            ring.push_back(atAngle(static_cast<double>(i) / static_cast<double>(corners),
                                   size * uniform(0.3, 1)));
        }
        return ring;
    }

    Ring comb(std::size_t teeth, double size) {
        const double width = 2 * size / static_cast<double>(2 * teeth - 1);
        Ring ring{{size, -size}, {-size, -size}};
        for (std::size_t i = 0; i < teeth; ++i) {
            const double left = -size + 2 * width * static_cast<double>(i);
            const double top = size * uniform(-0.3, 1);
            if (i > 0) {
                ring.push_back({left, -size / 2});
            }
            ring.insert(ring.end(), {{left, top}, {left + width, top}});
            if (i + 1 < teeth) {
                ring.push_back({left + width, -size / 2});
            }
        }
        return ring;
    }

    Ring spiral(std::size_t corners, double size) {
        Ring out;
        Ring back;
        const double perCorner = 0.9 * size / static_cast<double>(corners);
        const double thickness = perCorner * uniform(2, 6);
        for (std::size_t i = 0; i < corners; ++i) {
            const auto place = static_cast<double>(i);
            const double radius = 0.1 * size + perCorner * place;
            out.push_back(atAngle(place / 8, radius));
            back.push_back(atAngle(place / 8, std::max(radius - thickness, radius / 4)));
        }
        out.insert(out.end(), back.rbegin(), back.rend());
        return out;
    }

    static bool isSimple(const Ring& ring) {
        const std::size_t size = ring.size();
        const auto vertex = [&](std::size_t i) { return ring[i % size]; };
        for (std::size_t i = 0; i < size; ++i) {
            if (isOnEdge(vertex(i), vertex(i + 1), vertex(i + 2)) ||
                isOnEdge(vertex(i + 1), vertex(i + 2), vertex(i))) {
                return false;
            }
            for (std::size_t j = i + 2; j < size + i - 1; ++j) {
                if (meet(vertex(i), vertex(i + 1), vertex(j), vertex(j + 1))) {
                    return false;
                }
            }
        }
        return true;
    }

    /// Whether the hole lies in the first ring and outside the others, with at most one vertex in
    /// common with each.
    static bool fits(const Ring& hole, const std::vector<Ring>& rings) {
        for (const Ring& ring : rings) {
            std::size_t shared = 0;
            const auto lie = [&](const Ring& these, const Ring& other, PointLocation where) {
                return std::all_of(these.begin(), these.end(), [&](const BoundaryVertex& vertex) {
                    const bool isShared =
                        std::any_of(other.begin(), other.end(), [&](const BoundaryVertex& each) {
                            return isSame(each, vertex);
                        });
                    shared += isShared ? 1 : 0;
                    return isShared || locateExactly(other, vertex) == where;
                });
            };
            const bool isOuter = &ring == rings.data();
            if (!lie(hole, ring, isOuter ? PointLocation::Inside : PointLocation::Outside) ||
                !lie(ring, hole, PointLocation::Outside) || shared > 2) {
                return false;
            }
            bool crosses = false;
            forEachEdge(hole, [&](const BoundaryVertex& a, const BoundaryVertex& b) {
                forEachEdge(ring, [&](const BoundaryVertex& c, const BoundaryVertex& d) {
                    crosses = crosses || cross(a, b, c, d);
                });
            });
            if (crosses) {
                return false;
            }
        }
        return true;
    }

    std::mt19937 random_;
};

} // namespace veldtrim::test
