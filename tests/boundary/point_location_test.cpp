#include "boundary/model/boundary_model.h"
#include "boundary/point_location.h"
#include "judges/model_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace veldtrim {
namespace {

using test::modelOf;
using test::Ring;

constexpr auto inside = PointLocation::Inside;
constexpr auto onBoundary = PointLocation::OnBoundary;
constexpr auto outside = PointLocation::Outside;

PointLocation locate(const Ring& ring, const ElevationPoint& point) {
    const BoundaryModel model = modelOf({ring});
    BoundaryPolygon polygon = model.polygons()[0];
    return boundsContain(polygon, point) ? locatePoint(polygon, model.vertices(), point) : outside;
}

/// Expects the verdict for the ring, for the reversed ring, for every first vertex, and for all of
/// these with the first vertex repeated at the end.
void expectInAllForms(Ring ring, const ElevationPoint& point, PointLocation expected) {
    std::string what = "point " + std::to_string(point.x) + " " + std::to_string(point.y) + " in";
    for (const BoundaryVertex& vertex : ring) {
        what += " (" + std::to_string(vertex.x) + ", " + std::to_string(vertex.y) + ")";
    }
    for (int orientation = 0; orientation < 2; ++orientation) {
        for (std::size_t first = 0; first < std::max<std::size_t>(ring.size(), 1); ++first) {
            ASSERT_EQ(locate(ring, point), expected) << what << " from " << first;
            if (ring.size() > 2) {
                Ring closed = ring;
                closed.push_back(ring.front());
                ASSERT_EQ(locate(closed, point), expected)
                    << "closed " << what << " from " << first;
            }
            if (!ring.empty()) {
                std::rotate(ring.begin(), ring.begin() + 1, ring.end());
            }
        }
        std::reverse(ring.begin(), ring.end());
    }
}

TEST(PointLocation, IsExactOnEdgesAndVertices) {
    const Ring square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const Ring flat{{0, 2}, {8, 2}, {4, 2}};
    const Ring segment{{0, 0}, {10, 0}};
    struct Case {
        Ring ring;
        ElevationPoint point;
        PointLocation expected;
    };
    for (const Case& each : {
             Case{square, {10, 5}, onBoundary},
             Case{square, {10.0000005, 5}, outside}, // within the pretest's tolerance
             Case{square, {5, std::nextafter(0.0, -1.0)}, outside},
             Case{square, {5, std::nextafter(0.0, 1.0)}, inside},
             Case{{}, {0, 0}, outside},
             Case{{{3, 3}}, {3, 3}, outside},
             Case{segment, {5, 0}, onBoundary},
             Case{segment, {10, 0}, onBoundary},
             Case{segment, {5, 0.0000001}, outside},
             Case{segment, {-0.0000001, 0}, outside},
             Case{flat, {6.5, 2}, onBoundary},
             Case{flat, {8.0000005, 2}, onBoundary}, // within the tolerance, and on the line
             Case{flat, {8.1, 2}, outside},
             Case{flat, {4, 2.0000001}, outside},
         }) {
        expectInAllForms(each.ring, each.point, each.expected);
    }
}

TEST(PointLocation, NamesTheVertexOfAOneVertexRingOnce) {
    const BoundaryModel model = modelOf({{{1, 1}, {1, 1}}});
    BoundaryPolygon polygon = model.polygons()[0];
    EXPECT_EQ(locatePoint(polygon, model.vertices(), {1, 1}), onBoundary);
    polygon.vertexIndices = {0, 0}; // now one vertex, named twice
    EXPECT_EQ(locatePoint(polygon, model.vertices(), {1, 1}), outside);
    polygon.vertexIndices = {0};
    EXPECT_EQ(locatePoint(polygon, model.vertices(), {1, 1}), outside);
}

/// The verdict in integers: on an edge, else the parity of the edges to the right of the point.
PointLocation locateExactly(const Ring& ring, std::int64_t px, std::int64_t py) {
    bool odd = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& from = ring[i];
        const BoundaryVertex& to = ring[(i + 1) % ring.size()];
        const auto ax = static_cast<std::int64_t>(from.x) - px;
        const auto ay = static_cast<std::int64_t>(from.y) - py;
        const auto bx = static_cast<std::int64_t>(to.x) - px;
        const auto by = static_cast<std::int64_t>(to.y) - py;
        const std::int64_t cross = ax * by - ay * bx;
        if (cross == 0 && ax * bx <= 0 && ay * by <= 0) {
            return onBoundary;
        }
        if ((ay < 0) != (by < 0)) {
            odd = odd != ((cross > 0) == (by > ay));
        }
    }
    return odd ? inside : outside;
}

// Small integer grids: vertices, edges and points coincide in every way there is. All arithmetic of
// the walk is exact there when edges are axis-parallel, diagonal or span a power of two.
TEST(PointLocation, AgreesWithExactArithmeticOnGrids) {
    std::mt19937 random(5);
    for (int round = 0; round < 500; ++round) {
        Ring ring;
        int x = static_cast<int>(random() % 9);
        int y = static_cast<int>(random() % 9);
        for (std::size_t size = 3 + random() % 8; ring.size() < size;) {
            ring.push_back({static_cast<double>(x), static_cast<double>(y)});
            const int span = 1 << (random() % 4);
            x = random() % 3 == 0 ? x : std::clamp(x + (random() % 2 == 0 ? span : -span), 0, 8);
            y = random() % 3 == 0 ? y : std::clamp(y + (random() % 2 == 0 ? span : -span), 0, 8);
        }
        for (int place = 0; place < 121; ++place) {
            const int px = place % 11 - 1;
            const int py = place / 11 - 1;
            ASSERT_NO_FATAL_FAILURE(
                expectInAllForms(ring, {static_cast<double>(px), static_cast<double>(py)},
                                 locateExactly(ring, px, py)));
        }
    }
}

} // namespace
} // namespace veldtrim
