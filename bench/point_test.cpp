// What the point test costs: beside the plain walk and beside GEOS on the same shapes, and how that
// grows with the model; and what building the index costs.

#include "boundary/file/boundary_reader.h"
#include "boundary/index/point_index.h"
#include "data.h"
#include "elevation/record.h"
#include "geos_area.h"
#include "judges/plain_walk.h"
#include "run/record_reader.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace veldtrim;
using namespace veldtrim::bench;

/// Points to take turns with: enough that no branch predictor learns them by heart.
constexpr std::size_t randomPointCount = std::size_t{1} << 20U;

const std::vector<ElevationPoint>& randomPoints() {
    static const std::vector<ElevationPoint> points = [] {
        const std::string records = readRecords(randomPointCount);
        std::vector<ElevationPoint> all(randomPointCount);
        for (std::size_t i = 0; i < all.size(); ++i) {
            parseRecord({&records[i * recordSize], recordSize}, 'x', ';', all[i]);
        }
        return all;
    }();
    return points;
}

/// The model of the shape of this name, whose derived data is built already; one for the whole
/// process.
BoundaryModel& modelOf(const std::string& shape) {
    static std::map<std::string, BoundaryModel> models;
    const auto [found, isNew] = models.try_emplace(shape);
    BoundaryModel& model = found->second;
    if (isNew) {
        if (!readin_b_XML(shape + ".xml", model)) {
            throw std::runtime_error("there is no " + shape + ".xml");
        }
        // The model builds its index once it has been asked often enough for that to pay.
        constexpr std::size_t often = 20'000;
        for (std::size_t i = 0; i < often; ++i) {
            model.isInBoundary(randomPoints()[i]);
        }
    }
    return model;
}

template <typename Ask>
void askForPoints(benchmark::State& state, Ask ask) {
    const std::vector<ElevationPoint>& points = randomPoints();
    std::size_t next = 0;
    for (auto unused : state) {
        static_cast<void>(unused);
        benchmark::DoNotOptimize(ask(points[next]));
        next = (next + 1) % randomPointCount;
    }
}

/// One point after the other, each answer awaited.
void askModel(benchmark::State& state, const std::string& shape) {
    BoundaryModel& model = modelOf(shape);
    askForPoints(state, [&](const ElevationPoint& point) { return model.isInBoundary(point); });
}

/// As the clipping pass asks.
void askModelInBatches(benchmark::State& state, const std::string& shape) {
    BoundaryModel& model = modelOf(shape);
    const std::span<const ElevationPoint> points = randomPoints();
    std::array<PointLocation, RecordReader::capacity> locations{};
    static_assert(randomPointCount % locations.size() == 0);
    std::size_t next = 0;
    while (state.KeepRunningBatch(locations.size())) {
        model.locateEach(points.subspan(next, locations.size()), locations);
        benchmark::DoNotOptimize(locations.data());
        benchmark::ClobberMemory();
        next = (next + locations.size()) % randomPointCount;
    }
}

void walk(benchmark::State& state, const std::string& shape) {
    const BoundaryModel& model = modelOf(shape);
    askForPoints(state, [&](const ElevationPoint& point) {
        return test::plainWalk(model.polygons(), model.vertices(), point);
    });
}

void askGeos(benchmark::State& state, const std::string& shape) {
    static std::map<std::string, std::unique_ptr<GeosArea>> areas;
    std::unique_ptr<GeosArea>& area = areas[shape];
    if (!area) {
        area = std::make_unique<GeosArea>(modelOf(shape));
        area->intersects(randomPoints().front()); // builds what it prepares
    }
    askForPoints(state, [&](const ElevationPoint& point) { return area->intersects(point); });
}

void buildIndex(benchmark::State& state, const std::string& shape) {
    const BoundaryModel& model = modelOf(shape);
    std::size_t bytes = 0;
    for (auto unused : state) {
        static_cast<void>(unused);
        const PointIndex index(model.polygons(), model.vertices());
        bytes = index.byteSize();
        benchmark::ClobberMemory();
    }
    const auto vertices = static_cast<double>(model.vertices().size());
    state.counters["vertices"] = vertices;
    state.counters["bytesPerVertex"] = static_cast<double>(bytes) / vertices;
}

void registerAll() {
    using benchmark::RegisterBenchmark;
    for (const std::string shape : {"square", "ring-10000", "ring-100000", "spikes-100000",
                                    "needles-100000", "polygons-10000"}) {
        RegisterBenchmark(("points/" + shape + "/model").c_str(), askModel, shape);
        RegisterBenchmark(("points/" + shape + "/batches").c_str(), askModelInBatches, shape);
        RegisterBenchmark(("points/" + shape + "/walk").c_str(), walk, shape);
        RegisterBenchmark(("points/" + shape + "/geos").c_str(), askGeos, shape);
    }
    for (const std::string shape :
         {"ring-100", "ring-1000", "ring-10000", "ring-100000", "ring-1000000", "polygons-10",
          "polygons-100", "polygons-1000", "polygons-10000", "polygons-100000"}) {
        RegisterBenchmark(("scaling/" + shape + "/model").c_str(), askModel, shape);
        RegisterBenchmark(("scaling/" + shape + "/batches").c_str(), askModelInBatches, shape);
    }
    for (const std::string shape : {"ring-10000", "ring-100000", "ring-1000000", "spikes-100000",
                                    "needles-100000", "polygons-10000", "polygons-100000"}) {
        RegisterBenchmark(("building/" + shape + "/index").c_str(), buildIndex, shape)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char* argv[]) {
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
