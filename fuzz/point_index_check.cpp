// Compares the point index with the plain walk on many random points over models of every kind.
//
//   point_index_check [points [seed]]
//
// Prints the points compared for each kind and how many of them were inside; exit code 1 at the
// first point on which the two differ, with all that is needed to see it again.

#include "boundary/index/point_index.h"
#include "judges/model_generator.h"
#include "judges/plain_walk.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using veldtrim::ElevationPoint;
using veldtrim::PointLocation;
using veldtrim::test::ModelGenerator;

constexpr long long usualPoints = 50'000'000;
constexpr std::size_t pointsPerModel = 5'000;

struct Tally {
    long long models = 0;
    long long points = 0;
    long long inside = 0;
};

/// Compares on one model; false after a point on which the answers differ.
bool checkModel(ModelGenerator::Kind kind, unsigned seed, Tally& tally) {
    ModelGenerator generator(seed);
    const veldtrim::BoundaryModel model = generator.model(kind);
    const std::vector<veldtrim::BoundaryPolygon>& polygons = model.polygons();
    const veldtrim::PointIndex index(polygons, model.vertices());
    std::vector<ElevationPoint> points(pointsPerModel);
    std::generate(points.begin(), points.end(), [&] { return generator.point(model); });
    std::vector<PointLocation> locations(points.size());
    index.locateEach(points, locations);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const ElevationPoint& point = points[i];
        const bool walked = veldtrim::test::plainWalk(polygons, model.vertices(), point);
        const PointLocation alone = index.locate(point);
        if ((alone != PointLocation::Outside) != walked || locations[i] != alone) {
            std::printf("kind %s, seed %u: the walk says %s for %a %a\n",
                        ModelGenerator::name(kind).c_str(), seed, walked ? "inside" : "outside",
                        point.x, point.y);
            return false;
        }
        ++tally.points;
        tally.inside += walked ? 1 : 0;
    }
    ++tally.models;
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    const long long wanted = argc > 1 ? std::strtoll(argv[1], nullptr, 10) : usualPoints;
    const auto firstSeed =
        argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : 1'000'000U;
    const std::vector<ModelGenerator::Kind> kinds = ModelGenerator::allKinds();
    const long long perKind =
        (wanted + static_cast<long long>(kinds.size()) - 1) / static_cast<long long>(kinds.size());
    long long total = 0;
    std::printf("%-12s %10s %12s %12s\n", "kind", "models", "points", "inside");
    for (const ModelGenerator::Kind kind : kinds) {
        Tally tally;
        for (unsigned seed = firstSeed; tally.points < perKind; ++seed) {
            if (!checkModel(kind, seed, tally)) {
                return 1;
            }
        }
        std::printf("%-12s %10lld %12lld %12lld\n", ModelGenerator::name(kind).c_str(),
                    tally.models, tally.points, tally.inside);
        std::fflush(stdout);
        total += tally.points;
    }
    std::printf("%lld points, no difference\n", total);
    return 0;
}
