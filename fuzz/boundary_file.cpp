// Boundary file to model to point test. An input that begins with "<" is the file as it stands;
// any other draws a file of valid form, whose model is then known. The points are those at which
// a test can go wrong; the plain walk judges the model's answer and the index built for it.

#include "boundary/index/point_index.h"
#include "boundary/model/boundary_model.h"
#include "drawn_boundaries.h"
#include "judges/plain_walk.h"
#include "judges/stream_numbers.h"
#include "target.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using veldtrim::BoundaryModel;
using veldtrim::BoundaryPolygon;
using veldtrim::BoundaryVertex;
using veldtrim::ElevationPoint;
using veldtrim::PointIndex;
using veldtrim::PointLocation;
using veldtrim::fuzz::Draw;
using veldtrim::fuzz::DrawnBoundaries;
using veldtrim::fuzz::require;

constexpr std::size_t mostVertices = 60;

/// The model is the one that was drawn, to the last bit.
void checkModel(const BoundaryModel& model, const DrawnBoundaries& drawn) {
    require(model.polygons().size() == drawn.rings.size(), "all polygons are in the model");
    std::size_t next = 0;
    for (std::size_t i = 0; i < drawn.rings.size(); ++i) {
        const BoundaryPolygon& polygon = model.polygons()[i];
        require(polygon.vertexIndices.size() == drawn.rings[i].size(), "all points are in a ring");
        for (const auto& [xText, yText] : drawn.rings[i]) {
            const BoundaryVertex& vertex = model.vertices().at(next++);
            double x = 0;
            double y = 0;
            veldtrim::fuzz::extractFrom(std::string(xText), x);
            veldtrim::fuzz::extractFrom(std::string(yText), y);
            require(veldtrim::fuzz::sameBits(vertex.x, x) && veldtrim::fuzz::sameBits(vertex.y, y),
                    "a vertex");
        }
    }
}

/// Vertices, where their coordinates cross, middles between them, and what lies beside those.
std::vector<ElevationPoint> pointsToTest(const std::vector<BoundaryVertex>& vertices) {
    std::vector<ElevationPoint> points{{0, 0}, {3, 3}, {1e9, -1e9}};
    const std::size_t count = std::min(vertices.size(), mostVertices);
    for (std::size_t i = 0; i < count; ++i) {
        const BoundaryVertex& a = vertices[i];
        for (std::size_t j = i; j < std::min(count, i + 7); ++j) {
            const BoundaryVertex& b = vertices[j];
            points.push_back({a.x, b.y});
            points.push_back({b.x, a.y});
            points.push_back({a.x / 2 + b.x / 2, a.y / 2 + b.y / 2});
        }
        points.push_back({std::nextafter(a.x, 1e308), a.y});
        points.push_back({std::nextafter(a.x, -1e308), a.y});
        points.push_back({a.x, std::nextafter(a.y, 1e308)});
    }
    return points;
}

void checkPoints(BoundaryModel& model) {
    const std::vector<BoundaryPolygon>& polygons = model.polygons();
    const std::vector<BoundaryVertex>& vertices = model.vertices();
    const PointIndex index(polygons, vertices);
    const std::vector<ElevationPoint> points = pointsToTest(vertices);
    std::vector<PointLocation> fromIndex(points.size());
    index.locateEach(points, fromIndex);
    // The second round meets a model that may have built data of its own by then.
    std::vector<PointLocation> fromModel(points.size());
    for (int round = 0; round < 2; ++round) {
        model.locateEach(points, fromModel);
        for (std::size_t i = 0; i < points.size(); ++i) {
            const bool walked = veldtrim::test::plainWalk(polygons, vertices, points[i]);
            require(model.isInBoundary(points[i]) == walked, "the model answers as the walk does");
            require((fromModel[i] != PointLocation::Outside) == walked,
                    "the model answers for many points as for one");
            require((fromIndex[i] != PointLocation::Outside) == walked,
                    "the index answers as the walk does");
            require(index.locate(points[i]) == fromIndex[i],
                    "the index answers for many points as for one");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    BoundaryModel model;
    if (size > 0 && data[0] == '<') {
        static_cast<void>(
            veldtrim::fuzz::readBoundaries(std::string(veldtrim::fuzz::textOf(data, size)), model));
    } else {
        Draw input(veldtrim::fuzz::textOf(data, size));
        const DrawnBoundaries drawn = veldtrim::fuzz::drawBoundaries(input, true);
        require(veldtrim::fuzz::readBoundaries(drawn.text, model), "a file of valid form is read");
        checkModel(model, drawn);
    }
    checkPoints(model);
    return 0;
}
