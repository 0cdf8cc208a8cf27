#include "boundary/boundary_model.h"
#include "boundary/model_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace veldtrim {
namespace {

using test::addRing;
using test::modelOf;

TEST(BoundaryModel, NumbersVerticesInReadingOrder) {
    BoundaryModel model;
    for (int round = 0; round < 2; ++round) {
        addRing(model, {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}});
        addRing(model, {{5, 5}});
        ASSERT_EQ(model.polygons().size(), 2U);
        EXPECT_EQ(model.polygons()[0].vertexIndices, (std::vector<std::int32_t>{0, 1, 2, 3, 4}));
        EXPECT_EQ(model.polygons()[1].vertexIndices, (std::vector<std::int32_t>{5}));
        model.clear();
        EXPECT_TRUE(model.polygons().empty());
        EXPECT_TRUE(model.vertices().empty());
    }
}

TEST(BoundaryPolygon, BoundsAreTheBoxOfItsVertices) {
    const BoundaryModel model = modelOf({{{3, 1}, {1, 4}, {2, 2}}});
    const BoundingBox& bounds = model.polygons()[0].bounds;
    EXPECT_EQ(bounds.xMin, 1);
    EXPECT_EQ(bounds.yMin, 1);
    EXPECT_EQ(bounds.xMax, 3);
    EXPECT_EQ(bounds.yMax, 4);

    BoundaryPolygon empty;
    empty.bounds = {1, 2, 3, 4};
    empty.computeBounds(model.vertices());
    EXPECT_EQ(empty.bounds.yMax, 4) << "bounds without vertices stay as they were";
}

TEST(BoundaryPolygon, SegmentsDoNotCloseTheRing) {
    BoundaryModel model = modelOf({{{0, 0}, {4, 0}, {4, 3}, {0, 3}}});
    BoundaryPolygon polygon = model.polygons()[0];
    for (int round = 0; round < 2; ++round) { // built anew, not appended
        polygon.buildSegments(model.vertices());
        ASSERT_EQ(polygon.segments.size(), 3U);
    }
    EXPECT_EQ(polygon.segments[2].start.x, 4);
    EXPECT_EQ(polygon.segments[2].end.x, 0);
    EXPECT_EQ(polygon.segments[1].squaredLength, 9);
    EXPECT_EQ(polygon.segments[1].normal.x, 1);
    EXPECT_EQ(polygon.segments[1].normal.y, 0);
}

TEST(BoundarySegment, DistanceTakesTheNearestPart) {
    const BoundarySegment level({0, 0}, {10, 0});
    EXPECT_EQ(level.distanceTo(5, 3), 3);
    EXPECT_EQ(level.distanceTo(-3, 4), 5);
    EXPECT_EQ(level.distanceTo(13, 4), 5);
    EXPECT_EQ(level.distanceTo(5, 0), 0);
    const BoundarySegment point({0, 0}, {0, 0});
    EXPECT_EQ(point.squaredLength, 0);
    EXPECT_EQ(point.normal.x, 0);
    EXPECT_EQ(point.distanceTo(3, -4), 5);
    // Shorter than 1e-7 counts as its start, whatever lies at its end.
    EXPECT_EQ(BoundarySegment({1, 1}, {1, 1 + 5e-8}).distanceTo(1, 2), 1);
}

} // namespace
} // namespace veldtrim
