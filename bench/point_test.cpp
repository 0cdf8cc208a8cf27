// What the point test costs: beside the plain walk and beside GEOS on the same shapes, and how that
// grows with the model; and what building the index costs.

#include "boundary/index/point_index.h"
#include "boundary/point_location.h"
#include "point_subject.h"
#include "run/record_reader.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace {

using namespace veldtrim;
using namespace veldtrim::bench;

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
    BoundaryModel& model = PointSubject::named(shape).warmModel();
    askForPoints(state, [&](const ElevationPoint& point) { return model.isInBoundary(point); });
}

/// As the clipping pass asks.
void askModelInBatches(benchmark::State& state, const std::string& shape) {
    BoundaryModel& model = PointSubject::named(shape).warmModel();
    const std::span<const ElevationPoint> points = randomPoints();
    std::array<PointLocation, RecordReader::capacity> locations;
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
    PointSubject& subject = PointSubject::named(shape);
    askForPoints(state, [&](const ElevationPoint& point) { return subject.walk(point); });
}

void askGeos(benchmark::State& state, const std::string& shape) {
    GeosArea& area = PointSubject::named(shape).geosArea();
    askForPoints(state, [&](const ElevationPoint& point) { return area.intersects(point); });
}

void buildIndex(benchmark::State& state, const std::string& shape) {
    PointSubject& subject = PointSubject::named(shape);
    std::size_t bytes = 0;
    for (auto unused : state) {
        static_cast<void>(unused);
        const PointIndex index(subject.polygons(), subject.vertices());
        bytes = index.byteSize();
        benchmark::ClobberMemory();
    }
    const auto vertices = static_cast<double>(subject.size());
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
