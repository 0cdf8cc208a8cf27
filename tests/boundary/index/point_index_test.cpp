// The index against the walk over all polygons: no point may tell them apart.

#include "boundary/index/point_index.h"
#include "boundary/point_location.h"
#include "judges/model_generator.h"
#include "judges/plain_walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <vector>

namespace veldtrim {
namespace {

using test::ModelGenerator;

/// Expects of each point that the index says, alone and among the others, what one of the polygons
/// that hold it says. Which of these is asked first may decide between inside and on the boundary.
void expectAgreement(const BoundaryModel& model, const std::vector<ElevationPoint>& points) {
    const std::vector<BoundaryPolygon>& polygons = model.polygons();
    const PointIndex index(polygons, model.vertices());
    std::vector<PointLocation> locations(points.size());
    index.locateEach(points, locations);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const ElevationPoint& point = points[i];
        const bool agrees = test::isVerdict(locations[i], polygons, model.vertices(), point);
        ASSERT_TRUE(agrees && index.locate(point) == locations[i])
            << std::hexfloat << "point " << point.x << " " << point.y;
    }
}

class PointIndexKinds : public testing::TestWithParam<ModelGenerator::Kind> {};

TEST_P(PointIndexKinds, AnswersAsTheWalkDoes) {
    for (unsigned seed = 0; seed < 140; ++seed) {
        ModelGenerator generator(seed);
        const BoundaryModel model = generator.model(GetParam());
        // Full batches, and one point more or less.
        std::vector<ElevationPoint> points(5 * PointIndex::batchSize - 1 + seed % 3);
        std::generate(points.begin(), points.end(), [&] { return generator.point(model); });
        SCOPED_TRACE(seed);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(model, points));
    }
}

INSTANTIATE_TEST_SUITE_P(All, PointIndexKinds, testing::ValuesIn(ModelGenerator::allKinds()),
                         [](const auto& kind) { return ModelGenerator::name(kind.param); });

TEST(PointIndex, TakesAnyModelAndAnyPoint) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    const std::vector<std::vector<BoundaryVertex>> rings{
        {},
        {{0, 0}, {notANumber, 4}, {4, 4}},
        {{0, 0}, {infinity, 0}, {4, 4}},
        {{0, 0}, {1e308, 0}, {1e308, 1e308}, {-1e308, 1e308}},
        {{0, 0}, {5e-324, 5e-324}, {0, 5e-324}},
        {{0, 0}, {1e-160, 2e-160}, {3e-160, 0}},
        {{0, 0}, {7, 5e-324}, {7, 3}, {0, 3}}};
    const std::vector<double> values{
        0, 1, 5, -0.0, 4, 1e308, -1e308, infinity, 5e-324, notANumber, 1e-160, 7, 3.5, 1.5e-160, 2};
    std::vector<ElevationPoint> points;
    for (const double x : values) {
        for (const double y : values) {
            points.push_back({x, y});
        }
    }
    for (std::size_t use = 0; use < std::size_t{1} << rings.size(); ++use) {
        BoundaryModel model;
        for (std::size_t i = 0; i < rings.size(); ++i) {
            if ((use >> i & 1) != 0) {
                test::addRing(model, rings[i]);
            }
        }
        SCOPED_TRACE(use);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(model, points));
    }
}

TEST(PointIndex, OwnsWhatItNeeds) {
    BoundaryModel model = test::modelOf({{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {{20, 0}, {30, 0}}});
    std::vector<BoundaryPolygon> polygons = model.polygons();
    polygons[0].bounds = {0, 0, 5, 5}; // not those of the vertices
    const PointIndex index(polygons, model.vertices());
    polygons.clear();
    model.clear();
    EXPECT_EQ(index.locate({4, 4}), PointLocation::Inside);
    EXPECT_EQ(index.locate({6, 6}), PointLocation::Outside);
    EXPECT_EQ(index.locate({25, 0}), PointLocation::OnBoundary);
}

// The model builds its index while it is asked, and must drop it when it changes.
TEST(PointIndex, IsBuiltAndDroppedByItsModel) {
    ModelGenerator generator(1);
    BoundaryModel model = generator.model(ModelGenerator::Kind::Star);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 3000; ++i) {
            const std::array points{generator.point(model), generator.point(model)};
            std::array<PointLocation, points.size()> locations{};
            model.locateEach(points, locations);
            const bool held = test::plainWalk(model.polygons(), model.vertices(), points[1]);
            ASSERT_EQ(locations[1] != PointLocation::Outside, held);
            ASSERT_EQ(model.isInBoundary(points[1]), held);
        }
        for (int i = 0; i < 50; ++i) {
            test::addRing(model, {{90, 90}, {101, 90}, {90.0 + i, 101}});
        }
    }
    model.clear();
    EXPECT_FALSE(model.isInBoundary({0, 0}));
}

TEST(PointIndex, StaysSmallOnLongSpikes) {
    const BoundaryModel model = test::modelOf({ModelGenerator(3).circle(20'000, 0.1, 1)});
    EXPECT_LT(PointIndex(model.polygons(), model.vertices()).byteSize(), 200U * 20'000U);
}

} // namespace
} // namespace veldtrim
