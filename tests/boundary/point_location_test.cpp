#include "boundary/boundary_model.h"
#include "boundary/model_builder.h"
#include "boundary/point_location.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace veldtrim {

void PrintTo(PointLocation location, std::ostream* out) {
    *out << (location == PointLocation::Inside       ? "Inside"
             : location == PointLocation::OnBoundary ? "OnBoundary"
                                                     : "Outside");
}

namespace {

using test::modelOf;
using test::Ring;

std::string describe(const Ring& ring) {
    std::string text;
    for (const BoundaryVertex& vertex : ring) {
        text += "(" + std::to_string(vertex.x) + ", " + std::to_string(vertex.y) + ") ";
    }
    return text;
}

PointLocation locate(const Ring& ring, const ElevationPoint& point) {
    const BoundaryModel model = modelOf({ring});
    BoundaryPolygon polygon = model.polygons()[0];
    return boundsContain(polygon, point) ? locatePoint(polygon, model.vertices(), point)
                                         : PointLocation::Outside;
}

/// Expects the verdict for the ring, for the reversed ring, for every first vertex, and for all of
/// these with the first vertex repeated at the end.
void expectInAllForms(Ring ring, const ElevationPoint& point, PointLocation expected) {
    for (int orientation = 0; orientation < 2; ++orientation) {
        for (std::size_t first = 0; first < std::max<std::size_t>(ring.size(), 1); ++first) {
            ASSERT_EQ(locate(ring, point), expected)
                << "point " << point.x << " " << point.y << " in " << describe(ring);
            if (ring.size() > 2) {
                Ring closed = ring;
                closed.push_back(ring.front());
                ASSERT_EQ(locate(closed, point), expected)
                    << "point " << point.x << " " << point.y << " in closed " << describe(ring);
            }
            if (!ring.empty()) {
                std::rotate(ring.begin(), ring.begin() + 1, ring.end());
            }
        }
        std::reverse(ring.begin(), ring.end());
    }
}

constexpr auto inside = PointLocation::Inside;
constexpr auto onBoundary = PointLocation::OnBoundary;
constexpr auto outside = PointLocation::Outside;

TEST(PointLocation, IsExactOnEdgesAndVertices) {
    const Ring square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const Ring flat{{0, 2}, {8, 2}, {4, 2}};
    const Ring segment{{0, 0}, {10, 0}};
    struct Case {
        Ring ring;
        ElevationPoint point;
        PointLocation expected;
    };
    const std::vector<Case> cases{
        {square, {5, 5}, inside},
        {square, {15, 5}, outside},
        {square, {5, -3}, outside},
        {square, {10, 5}, onBoundary},
        {square, {0, 5}, onBoundary},
        {square, {5, 10}, onBoundary},
        {square, {5, 0}, onBoundary},
        {square, {10, 10}, onBoundary},
        {square, {0, 0}, onBoundary},
        {square, {10.0000005, 5}, outside},
        {square, {5, -0.0000005}, outside},
        {square, {5, std::nextafter(0.0, -1.0)}, outside},
        {square, {5, std::nextafter(0.0, 1.0)}, inside},
        {{}, {0, 0}, outside},
        {{{3, 3}}, {3, 3}, outside},
        {segment, {5, 0}, onBoundary},
        {segment, {10, 0}, onBoundary},
        {segment, {5, 0.0000001}, outside},
        {segment, {-0.0000001, 0}, outside},
        {flat, {0, 2}, onBoundary},
        {flat, {6.5, 2}, onBoundary},
        {flat, {8.0000005, 2}, onBoundary}, // within the pretest's tolerance, and on the line
        {flat, {8.1, 2}, outside},
        {flat, {4, 2.0000001}, outside},
        {{{0, 0}, {10, 0}, {5, 10}}, {5, 5}, inside},
        {{{0, 0}, {10, 0}, {5, 10}}, {5, 11}, outside},
    };
    for (const Case& each : cases) {
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
    for (int round = 0; round < 4000; ++round) {
        const std::size_t size = 3 + random() % 8;
        Ring ring;
        int x = static_cast<int>(random() % 9);
        int y = static_cast<int>(random() % 9);
        for (std::size_t i = 0; i < size; ++i) {
            ring.push_back({static_cast<double>(x), static_cast<double>(y)});
            const int span = 1 << (random() % 4);
            x = random() % 3 == 0 ? x : std::clamp(x + (random() % 2 == 0 ? span : -span), 0, 8);
            y = random() % 3 == 0 ? y : std::clamp(y + (random() % 2 == 0 ? span : -span), 0, 8);
        }
        const bool reversed = round % 2 == 1;
        if (reversed) {
            std::reverse(ring.begin(), ring.end());
        }
        for (int px = -1; px <= 9; ++px) {
            for (int py = -1; py <= 9; ++py) {
                const ElevationPoint point{static_cast<double>(px), static_cast<double>(py)};
                ASSERT_EQ(locate(ring, point), locateExactly(ring, px, py))
                    << "point " << px << " " << py << " in " << describe(ring);
            }
        }
    }
}

TEST(PointInBoundary, AsksEveryPolygon) {
    const Ring left{{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    const Ring right{{2, 1}, {6, 1}, {6, 3}, {2, 3}};
    BoundaryModel model = modelOf({left, {}, {{9, 9}}, right, {{8, 0}, {8, 4}}});
    for (const ElevationPoint inOne : {ElevationPoint{1, 2}, {3, 2}, {5, 2}, {4, 2}, {8, 3}}) {
        EXPECT_TRUE(model.isInBoundary(inOne)) << inOne.x << " " << inOne.y;
    }
    for (const ElevationPoint inNone : {ElevationPoint{5, 0.5}, {7, 2}, {9, 9}, {8, 4.5}}) {
        EXPECT_FALSE(model.isInBoundary(inNone)) << inNone.x << " " << inNone.y;
    }
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(model.isInBoundary({notANumber, 2}));
    model.clear();
    EXPECT_FALSE(model.isInBoundary({1, 2}));
}

} // namespace
} // namespace veldtrim
