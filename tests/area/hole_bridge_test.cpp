#include "area/hole_bridge.h"

#include "judges/holed_polygon.h"
#include "judges/holed_polygon_generator.h"
#include "judges/model_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numeric>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace veldtrim {
namespace {

using test::forEachEdge;
using test::HoledPolygonGenerator;
using test::isKept;
using test::isSame;
using test::Ring;

using Line = std::pair<BoundaryVertex, BoundaryVertex>;

/// Returns the edges of the bridged ring that are no edges of the rings, each bridge once, in a
/// fixed order. Expects that each is passed in both directions and that no edge is missing.
std::vector<Line> bridgesOf(const BridgedRing& bridged, const std::vector<Ring>& rings) {
    using Key = std::tuple<double, double, double, double>;
    std::map<Key, int> surplus;
    const auto count = [&](const Ring& ring, int by) {
        forEachEdge(ring, [&](const BoundaryVertex& a, const BoundaryVertex& b) {
            surplus[{a.x, a.y, b.x, b.y}] += by;
        });
    };
    count(bridged.ring, 1);
    for (const Ring& ring : rings) {
        count(ring, -1);
    }
    std::vector<Line> bridges;
    for (const auto& [key, number] : surplus) {
        const auto [ax, ay, bx, by] = key;
        EXPECT_EQ(number, (surplus[{bx, by, ax, ay}]));
        if (std::tie(ax, ay) < std::tie(bx, by)) {
            EXPECT_GE(number, 0);
            bridges.insert(bridges.end(), static_cast<std::size_t>(number), {{ax, ay}, {bx, by}});
        }
    }
    return bridges;
}

bool isSlanted(const Line& line) {
    return line.first.x != line.second.x && line.first.y != line.second.y;
}

/// The verdicts of a bridged ring, and how many points were compared.
class Comparison {
public:
    explicit Comparison(const std::vector<Ring>& rings)
        : rings_(rings), bridged_(bridgeHoles({rings})), bridges_(bridgesOf(bridged_, rings)),
          model_(test::modelOf({bridged_.ring})) {
        std::size_t vertices = 2 * bridges_.size();
        for (const Ring& ring : rings) {
            vertices += ring.size();
        }
        EXPECT_EQ(bridged_.ring.size(), vertices);
        EXPECT_EQ(bridged_.slantedBridges,
                  std::count_if(bridges_.begin(), bridges_.end(), isSlanted));
        for (const auto& [a, b] : bridges_) {
            for (const auto& [c, d] : bridges_) {
                EXPECT_FALSE(test::cross(a, b, c, d));
            }
        }
    }

    void expectEqual(const BoundaryVertex& point) {
        EXPECT_EQ(model_.isInBoundary({point.x, point.y}), isKept(rings_, point))
            << point.x << " " << point.y;
    }

    bool keeps(const BoundaryVertex& point) { return model_.isInBoundary({point.x, point.y}); }
    [[nodiscard]] const std::vector<Line>& bridges() const { return bridges_; }

private:
    const std::vector<Ring>& rings_;
    BridgedRing bridged_;
    std::vector<Line> bridges_;
    BoundaryModel model_;
};

/// Returns a random point with integer coordinates on the line, an end if there are no others.
BoundaryVertex integerPointOn(const Line& line, HoledPolygonGenerator& random) {
    const auto& [a, b] = line;
    const double steps = static_cast<double>(
        std::gcd(static_cast<std::int64_t>(b.x - a.x), static_cast<std::int64_t>(b.y - a.y)));
    const double step = std::floor(random.uniform(0, steps + 1));
    return {a.x + step * ((b.x - a.x) / steps), a.y + step * ((b.y - a.y) / steps)};
}

struct Share {
    std::size_t points = 0;
    std::size_t dropped = 0;
};

/// Compares points everywhere, near vertices, on edges and on bridges. Counts separately the points
/// on slanted bridges whose x is rounded.
void comparePoints(const std::vector<Ring>& rings, double size, HoledPolygonGenerator& random,
                   Share& rounded) {
    Comparison comparison(rings);
    const std::vector<Line>& bridges = comparison.bridges();
    for (int i = 0; i < 250; ++i) {
        const Ring& ring = rings[random.below(rings.size())];
        const std::size_t at = random.below(ring.size());
        const Line edge{ring[at], ring[(at + 1) % ring.size()]};
        const auto moved = [&](const BoundaryVertex& point) {
            return BoundaryVertex{point.x + random.integer(1), point.y + random.integer(1)};
        };
        const Line& line = bridges.empty() ? edge : bridges[random.below(bridges.size())];
        const BoundaryVertex onLine = integerPointOn(line, random);
        const double share = random.uniform(0, 1);
        const BoundaryVertex near{std::round(std::lerp(line.first.x, line.second.x, share)),
                                  std::round(std::lerp(line.first.y, line.second.y, share))};
        for (const BoundaryVertex& point :
             {BoundaryVertex{random.integer(1.1 * size), random.integer(1.1 * size)},
              integerPointOn(edge, random), moved(ring[at]),
              random.below(2) == 0 ? onLine : moved(near)}) {
            comparison.expectEqual(point);
        }
        if (isSlanted(line) && !bridges.empty()) {
            const auto& [a, b] = line;
            const double y = std::lerp(a.y, b.y, random.uniform(0.01, 0.99));
            const long double run = (static_cast<long double>(y) - a.y) * (b.x - a.x);
            const auto x = static_cast<double>(a.x + run / (b.y - a.y));
            ++rounded.points;
            rounded.dropped += comparison.keeps({x, y}) ? 0 : 1;
        }
    }
}

// VELDTRIM_BRIDGE_POLYGONS sets the number of polygons, with 1,000 points each.
TEST(HoleBridge, KeepsThePointsOfThePolygonWithHoles) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there are no threads
    const char* const wanted = std::getenv("VELDTRIM_BRIDGE_POLYGONS");
    const int polygons = wanted != nullptr ? std::atoi(wanted) : 50; // NOLINT(cert-err34-c)
    HoledPolygonGenerator random(13);
    Share rounded;
    for (int i = 0; i < polygons && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const double size = i % 3 == 0 ? 60 : i % 3 == 1 ? 2000 : 10'000'000;
        const std::vector<Ring> rings =
            random.polygon(size, 1 + random.below(i % 10 == 0 ? 60 : 8));
        comparePoints(rings, size, random, rounded);
    }
    EXPECT_LT(50 * rounded.dropped, rounded.points);
}

/// Whether the rings bound no area: a ring is a single point; or edges cross; or some point is
/// inside a hole and not inside the outer ring, or inside two holes, or on a ring but not in the
/// area. If no edges cross, the vertices of each face lie on the grid. So if the spacing of the
/// grid is a multiple of 6, the centre of a triangle in each face and the middle of each piece of
/// an edge are integer points.
bool areFaulty(const std::vector<Ring>& rings, double size) {
    bool faulty = false;
    std::vector<Line> edges;
    for (const Ring& ring : rings) {
        faulty = faulty || std::all_of(ring.begin(), ring.end(), [&](const BoundaryVertex& each) {
                     return isSame(each, ring[0]);
                 });
        forEachEdge(ring, [&](const BoundaryVertex& a, const BoundaryVertex& b) {
            edges.emplace_back(a, b);
        });
    }
    for (const auto& [a, b] : edges) {
        for (const auto& [c, d] : edges) {
            faulty = faulty || test::cross(a, b, c, d);
        }
    }
    for (BoundaryVertex point{0, 0}; point.x <= size && !faulty;
         point = point.y < size ? BoundaryVertex{point.x, point.y + 1}
                                : BoundaryVertex{point.x + 1, 0}) {
        std::vector<PointLocation> where(rings.size());
        std::transform(rings.begin(), rings.end(), where.begin(),
                       [&](const Ring& ring) { return test::locateExactly(ring, point); });
        const auto inside = std::count(where.begin(), where.end(), PointLocation::Inside);
        if (std::count(where.begin(), where.end(), PointLocation::OnBoundary) == 0) {
            faulty = inside > 2 || (inside > 0 && where[0] != PointLocation::Inside);
        } else {
            faulty = !isKept(rings, point);
        }
    }
    return faulty;
}

// On so few points, rings touch, overlap, contain and cross each other in every way there is.
TEST(HoleBridge, RefusesExactlyWhatBoundsNoArea) {
    HoledPolygonGenerator random(7);
    int accepted = 0;
    for (int i = 0; i < 15'000 && !testing::Test::HasFailure(); ++i) {
        constexpr double spacing = 6;
        std::vector<Ring> rings;
        if (random.below(2) == 0) {
            rings.push_back({{0, 0}, {4 * spacing, 0}, {4 * spacing, 4 * spacing}, {0, 24}});
        }
        for (std::size_t count = 2 + random.below(2); rings.size() < count;) {
            rings.push_back(random.tangle(4, spacing, 3));
        }
        SCOPED_TRACE(i);
        const bool faulty = areFaulty(rings, 4 * spacing);
        if (faulty) {
            EXPECT_THROW(bridgeHoles({rings}), HoleFault);
            continue;
        }
        ++accepted;
        Comparison comparison(rings);
        for (int place = 0; place < 625; ++place) {
            comparison.expectEqual({std::floor(place / 25), place % 25 - 0.0});
        }
    }
    EXPECT_GT(accepted, 500);
}

/// Whether the line touches no edge between its ends and lies in the area.
bool isClear(const std::vector<Ring>& rings, const BoundaryVertex& a, const BoundaryVertex& b) {
    bool clear = isKept(rings, {(a.x + b.x) / 2, (a.y + b.y) / 2});
    for (const Ring& ring : rings) {
        forEachEdge(ring, [&](const BoundaryVertex& c, const BoundaryVertex& d) {
            const bool isEnd = isSame(c, a) || isSame(c, b);
            clear = clear && !test::cross(a, b, c, d) && (isEnd || !test::isOnEdge(a, b, c));
        });
    }
    return clear;
}

TEST(HoleBridge, TakesTheShortestStraightBridgeElseTheShortest) {
    HoledPolygonGenerator random(3);
    int slanted = 0;
    int straight = 0;
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        std::vector<Ring> rings = random.polygon(i % 2 == 0 ? 40 : 5000, 1);
        for (Ring& ring : rings) {
            for (BoundaryVertex& vertex : ring) {
                vertex = {2 * vertex.x, 2 * vertex.y}; // so that the middle of a bridge is exact
            }
        }
        if (rings.size() < 2) {
            continue;
        }
        std::optional<std::pair<bool, double>> best;
        for (const BoundaryVertex& a : rings[0]) {
            for (const BoundaryVertex& b : rings[1]) {
                const double dx = b.x - a.x;
                const double dy = b.y - a.y;
                const std::pair<bool, double> rank{dx != 0 && dy != 0, dx * dx + dy * dy};
                if ((!best || rank < *best) && isClear(rings, a, b)) {
                    best = rank;
                }
            }
        }
        ASSERT_TRUE(best);
        const std::vector<Line> bridges = Comparison(rings).bridges();
        ASSERT_EQ(bridges.size(), best->second == 0 ? 0U : 1U);
        if (!bridges.empty()) {
            const auto& [a, b] = bridges[0];
            EXPECT_EQ(isSlanted(bridges[0]), best->first);
            EXPECT_EQ((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y), best->second);
            ++(best->first ? slanted : straight);
        }
    }
    EXPECT_GT(slanted, 20);
    EXPECT_GT(straight, 20);
}

TEST(HoleBridge, DoesNotDependOnDirectionsAndFirstVertices) {
    HoledPolygonGenerator random(5);
    for (int i = 0; i < 100; ++i) {
        std::vector<Ring> rings = random.polygon(i % 2 == 0 ? 60 : 100'000, 6);
        const std::vector<Line> expected = Comparison(rings).bridges();
        for (Ring& ring : rings) {
            std::rotate(ring.begin(), ring.begin() + 2, ring.end());
            if (random.below(2) == 0) {
                std::reverse(ring.begin(), ring.end());
            }
        }
        const std::vector<Line> found = Comparison(rings).bridges();
        const auto isEqual = [](const Line& a, const Line& b) {
            return isSame(a.first, b.first) && isSame(a.second, b.second);
        };
        EXPECT_TRUE(
            std::equal(expected.begin(), expected.end(), found.begin(), found.end(), isEqual));
    }
}

// Thousands of vertices on both sides of a long, thin hole are close to each other, but cannot see
// each other. The search gives up, and the second hole gets a bridge from its leftmost vertex.
TEST(HoleBridge, JoinsHolesThatHideManyVerticesFromEachOther) {
    std::vector<Ring> rings{{{200'000, -100'001}, {200'001, 100'003}},
                            {{11, -90'000}, {19, -90'002}, {21, 90'007}, {13, 90'005}},
                            {{100'000, -33}}};
    for (int i = 0; i < 3000; ++i) {
        rings[0].push_back({i % 2 == 0 ? -3.0 : -1.0, 100'009 - 67.0 * i});
        rings[2].push_back({i % 2 == 0 ? 31.0 : 33.0, 79'002 - 52.0 * i});
    }
    Comparison comparison(rings);
    ASSERT_EQ(comparison.bridges().size(), 2U);
    HoledPolygonGenerator random(1);
    for (int i = 0; i < 1000; ++i) {
        comparison.expectEqual({std::round(random.uniform(-10, 50)), random.integer(90'000)});
        comparison.expectEqual(integerPointOn(comparison.bridges()[i % 2 == 0 ? 0 : 1], random));
    }
}

std::string faultOf(const std::vector<Ring>& rings) {
    try {
        bridgeHoles({rings});
    } catch (const HoleFault& fault) {
        return fault.what();
    }
    return "none";
}

TEST(HoleBridge, SaysWhatIsWrongAndWhere) {
    const Ring outer{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const Ring hole{{2, 2}, {4, 2}, {4, 4}, {2, 4}};
    const std::string advice = "; repair its geometry, for example with \"Fix geometries\" of QGIS "
                               "or with ogr2ogr -makevalid";
    for (const auto& [rings, fault] : std::vector<std::pair<std::vector<Ring>, std::string>>{
             {{outer, {{12, 1}, {14, 1}, {13, 2.5}}},
              "has a hole, number 1, that lies outside the outer ring near (12, 1)"},
             {{outer, hole, {{8, 5}, {12, 5}, {12, 6}}},
              "has a hole, number 2, that crosses the outer ring near (10, 5)"},
             {{outer, hole, {{2.5, 2.5}, {3, 2.5}, {3, 3}}},
              "has overlapping holes, numbers 1 and 2, near (2.5, 2.5)"},
             {{outer, hole, hole}, "has overlapping holes, numbers 1 and 2, near (2, 2)"},
             {{outer, hole, {{3, 3}, {5, 3}, {5, 3.5}}},
              "has overlapping holes, numbers 1 and 2, near (3, 3)"},
             {{hole, outer}, "has a hole, number 1, that lies outside the outer ring near (0, 0)"},
             {{outer, {{2, 2}, {4, 4}, {4, 2}, {2, 4}}},
              "has a ring, hole 1, that crosses itself near (3, 3)"},
             {{outer, {{10, 10}, {12, 12}, {10, 10}, {8, 9}, {9, 8}}},
              "has a hole, number 1, that lies outside the outer ring near (10, 10)"},
             {{outer, hole, {{2, 3}, {3, 3}, {2, 3}, {1, 3}, {1, 4}}},
              "has a hole, number 1, that contains a piece of hole 2 near (2, 3)"},
             {{outer, {{5, 5}, {5, 5}, {5, 5}}},
              "has a ring, hole 1, that is a single point near (5, 5)"},
             {{outer, {{3, 4.75}, {5, 5}, {3, 5.25}}, {{4, 4}, {6, 6}, {4, 6}, {6, 4}}},
              "has a ring, hole 2, that crosses itself near (5, 5)"}, // where hole 1 ends
             {{{{0, 0}, {1e101, 0}, {0, 1e101}}, {{1, 1}, {2, 1}, {2, 2}}},
              "has coordinates that are too large or too close to 0 to join its holes exactly, "
              "near (1e+101, 0)"}}) {
        EXPECT_EQ(faultOf(rings), fault + advice);
    }
    EXPECT_EQ(faultOf({outer, hole}), "none");
    EXPECT_EQ(faultOf({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}), "none"); // has no hole to join
}

} // namespace
} // namespace veldtrim
