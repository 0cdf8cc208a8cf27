// Looks up several points together. Each step prefetches the memory that the next step needs, for
// all points, so that their waits overlap.

#include "boundary/index/group.h"
#include "boundary/index/point_index.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace veldtrim {

namespace {

/// Requests the memory at `address` without waiting for it.
inline void prefetch(const void* address) {
#ifdef __GNUC__
    __builtin_prefetch(address);
    // The compiler regards a function that only prefetches as empty, and would remove its calls.
    asm volatile("" : : "r"(address));
#else
    static_cast<void>(address);
#endif
}

} // namespace

/// A point of the batch on its way down the tree, and the next cell to visit.
struct PointIndex::Descent {
    std::uint32_t point;
    PointPlace place;
    const Cell* cell;
};

/// A point of the batch and the undivided cell that contains it.
struct PointIndex::Arrival {
    std::uint32_t point;
    Cell cell;
};

void PointIndex::locateEach(std::span<const ElevationPoint> points,
                            std::span<PointLocation> locations) const {
    std::array<Descent, batchSize> descents{};
    std::array<Arrival, batchSize> arrivals{};
    while (!points.empty()) {
        const std::size_t size = std::min(points.size(), batchSize);
        const std::size_t entered =
            enterBatch(points.first(size), locations.data(), descents.data());
        const std::size_t arrived = descendBatch(descents.data(), entered, arrivals.data());
        for (std::size_t i = 0; i < arrived; ++i) {
            const auto [point, cell] = arrivals[i];
            locations[point] = locateInCell(cell, points[point]);
        }
        for (std::size_t i = 0; i < size && !data_.unindexed.polygons.empty(); ++i) {
            if (locations[i] == PointLocation::Outside) {
                locations[i] = locateInUnindexed(points[i]);
            }
        }
        points = points.subspan(size);
        locations = locations.subspan(size);
    }
}

/// Sets the locations that the overview decides, begins a descent for each other point, and returns
/// the number of descents.
std::size_t PointIndex::enterBatch(std::span<const ElevationPoint> points, PointLocation* locations,
                                   Descent* descents) const {
    std::array<std::size_t, batchSize> entries{}; // of the overview
    std::array<std::uint32_t, batchSize> entered{};
    std::size_t size = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        locations[i] = PointLocation::Outside;
        if (isInRegion(points[i])) {
            entries[size] = data_.overviewLevel.entryOf(placeOf(points[i]));
            prefetch(data_.overview.addressOf(entries[size]));
            entered[size] = static_cast<std::uint32_t>(i);
            ++size;
        }
    }
    // There is no branch on the state: for unordered points, it would often be mispredicted.
    std::size_t mixed = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint32_t point = entered[i];
        const AreaState state = data_.overview.state(entries[i]);
        locations[point] =
            state == AreaState::Inside ? PointLocation::Inside : PointLocation::Outside;
        entered[mixed] = point;
        mixed += state == AreaState::Mixed ? 1 : 0;
    }
    for (std::size_t i = 0; i < mixed; ++i) {
        const PointPlace place = placeOf(points[entered[i]]);
        descents[i] = {entered[i], place, tableEntry(place)};
        prefetch(descents[i].cell);
    }
    return mixed;
}

/// Moves all descents down, one level at a time, until they have arrived. Prefetches what
/// locateInCell needs for their cells. Returns the number of `arrivals`, which is `size`.
std::size_t PointIndex::descendBatch(Descent* descents, std::size_t size, Arrival* arrivals) const {
    std::size_t arrived = 0;
    for (unsigned shift = data_.tableLevel.shift; size != 0; --shift) {
        std::size_t going = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const Descent at = descents[i];
            const Cell cell = *at.cell;
            if (cell.kind() == Cell::Kind::Split) {
                descents[going] = {at.point, at.place, quarterOf(cell, at.place, shift - 1)};
                prefetch(descents[going].cell);
                ++going;
            } else {
                arrivals[arrived] = {at.point, cell};
                ++arrived;
                if (cell.kind() == Cell::Kind::Leaf) {
                    prefetch(&data_.leaves[cell.leafPosition()]);
                }
            }
        }
        size = going;
    }
    for (std::size_t i = 0; i < arrived; ++i) {
        prefetchEdges(arrivals[i].cell);
    }
    return arrived;
}

/// Prefetches the edges of a run, or those of a leaf's first polygon unless it has a queue.
void PointIndex::prefetchEdges(Cell cell) const {
    if (cell.kind() == Cell::Kind::Run) {
        const Run run = cell.run();
        const BoundaryVertex* const first = endsOf(run.firstEdge());
        prefetch(first);
        prefetch(first + run.size());
    } else if (cell.kind() == Cell::Kind::Leaf) {
        const Group group = readLeaf(&data_.leaves[cell.leafPosition()]).next();
        if (!group.head.hasQueue()) {
            for (const IndexEdge edge : group.edges) {
                prefetch(endsOf(edge.number()));
            }
        }
    }
}

} // namespace veldtrim
