#include "boundary/model/boundary_model.h"
#include "boundary/point_location.h"
#include "judges/model_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
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
    for (std::size_t form = 0; form == 0 || form < 2 * ring.size(); ++form) {
        if (form == ring.size()) {
            std::reverse(ring.begin(), ring.end());
        }
        Ring closed = ring;
        if (ring.size() > 2) {
            closed.push_back(ring.front());
        }
        ASSERT_TRUE(locate(ring, point) == expected && locate(closed, point) == expected)
            << "point " << point.x << " " << point.y << ", form " << form;
        if (!ring.empty()) {
            std::rotate(ring.begin(), ring.begin() + 1, ring.end());
        }
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
}

/// The verdict where the coordinates are small integers and all arithmetic is exact: on an edge,
/// else the parity of the edges to the right of the point.
PointLocation locateExactly(const Ring& ring, const ElevationPoint& point) {
    bool odd = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const BoundaryVertex& to = ring[(i + 1) % ring.size()];
        const double ax = ring[i].x - point.x;
        const double ay = ring[i].y - point.y;
        const double bx = to.x - point.x;
        const double by = to.y - point.y;
        const double cross = ax * by - ay * bx;
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
        BoundaryVertex at{static_cast<double>(random() % 9), static_cast<double>(random() % 9)};
        for (std::size_t size = 3 + random() % 8; ring.size() < size;) {
            ring.push_back(at);
            for (double* coordinate : {&at.x, &at.y}) {
                const double span = 1 << (random() % 4);
                const double step = random() % 3 == 0 ? 0 : random() % 2 == 0 ? span : -span;
                *coordinate = std::clamp(*coordinate + step, 0.0, 8.0);
            }
        }
        SCOPED_TRACE(round);
        for (int place = 0; place < 121; ++place) {
            const ElevationPoint point{place % 11 - 1.0, std::floor(place / 11) - 1};
            ASSERT_NO_FATAL_FAILURE(expectInAllForms(ring, point, locateExactly(ring, point)));
        }
    }
}

} // namespace
} // namespace veldtrim
