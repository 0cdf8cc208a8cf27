#include "boundary/model/boundary_model.h"
#include "judges/model_builder.h"

#include <gtest/gtest.h>

#include <vector>

namespace veldtrim {
namespace {

TEST(BoundaryModel, NumbersVerticesInReadingOrderAndBoundsThem) {
    BoundaryModel model = test::modelOf({{{3, 1}, {1, 4}, {2, 2}, {3, 1}}, {{5, 5}}});
    EXPECT_EQ(model.polygons().at(1).vertexIndices, std::vector<std::int32_t>{4});
    BoundaryPolygon polygon = model.polygons()[0];
    for (int round = 0; round < 2; ++round) {
        const auto [xMin, yMin, xMax, yMax] = polygon.bounds;
        EXPECT_TRUE(xMin == 1 && yMin == 1 && xMax == 3 && yMax == 4);
        polygon.vertexIndices.clear(); // without vertices the bounds stay as they were
        polygon.computeBounds(model.vertices());
    }
    model.clear();
    EXPECT_TRUE(model.polygons().empty());
    EXPECT_EQ(model.addVertex({1, 1}), 0);
}

TEST(BoundaryPolygon, SegmentsDoNotCloseTheRing) {
    const BoundaryModel model = test::modelOf({{{0, 0}, {4, 0}, {4, 3}, {0, 3}}});
    BoundaryPolygon polygon = model.polygons()[0];
    for (int round = 0; round < 2; ++round) { // built anew, not appended
        polygon.buildSegments(model.vertices());
        ASSERT_EQ(polygon.segments.size(), 3U);
    }
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
    EXPECT_EQ(BoundarySegment({0, 0}, {0, 0}).distanceTo(3, -4), 5);
    // Shorter than 1e-7 counts as its start, whatever lies at its end.
    EXPECT_EQ(BoundarySegment({1, 1}, {1, 1 + 5e-8}).distanceTo(1, 2), 1);
}

} // namespace
} // namespace veldtrim
