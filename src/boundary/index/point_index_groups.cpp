// The look-ups of several points side by side. Each step of all of them asks for the memory that
// the next step needs, so that they wait for it together.

#include "boundary/index/point_index.h"
#include "boundary/index/point_index_cells.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace veldtrim {

namespace {

/// Asks for the memory at `address`; the caller goes on meanwhile.
inline void prefetch(const void* address) {
#ifdef __GNUC__
    __builtin_prefetch(address);
    // A function that does nothing but this counts as one that does nothing, and is not called.
    asm volatile("" : : "r"(address));
#else
    static_cast<void>(address);
#endif
}

} // namespace

/// A point of the group on its way down the tree, and the cell that is to be looked at next.
struct PointIndex::Descent {
    std::uint32_t point;
    Place place;
    const cells::Cell* cell;
};

/// A point of the group and the undivided cell that holds it.
struct PointIndex::Arrival {
    std::uint32_t point;
    cells::Cell cell;
};

void PointIndex::locateEach(std::vector<BoundaryPolygon>& polygons,
                            const std::vector<BoundaryVertex>& vertices,
                            std::span<const ElevationPoint> points,
                            std::span<PointLocation> locations) const {
    std::array<Descent, groupSize> descents{};
    std::array<Arrival, groupSize> arrivals{};
    while (!points.empty()) {
        const std::size_t size = std::min(points.size(), groupSize);
        const std::size_t entered =
            enterGroup(points.first(size), locations.data(), descents.data());
        const std::size_t arrived = descendGroup(descents.data(), entered, arrivals.data());
        for (std::size_t i = 0; i < arrived; ++i) {
            const auto [point, cell] = arrivals[i];
            locations[point] = locateInCell(cell, polygons, vertices, points[point]);
        }
        for (std::size_t i = 0; i < size && !unindexed_.empty(); ++i) {
            if (locations[i] == PointLocation::Outside) {
                locations[i] = locateInUnindexed(polygons, vertices, points[i]);
            }
        }
        points = points.subspan(size);
        locations = locations.subspan(size);
    }
}

/// Finds the locations that the overview knows, begins a descent for each other point, and returns
/// the number of these.
std::size_t PointIndex::enterGroup(std::span<const ElevationPoint> points, PointLocation* locations,
                                   Descent* descents) const {
    std::array<Place, groupSize> places{};
    for (std::size_t i = 0; i < points.size(); ++i) {
        places[i] = isInRegion(points[i]) ? placeOf(points[i]) : Place{0, 0};
        prefetch(&overview_[overviewEntry(places[i]) / 4]);
    }
    // Without a branch on the state: for points in no order it would be guessed wrong half the
    // time.
    std::size_t size = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const unsigned state =
            isInRegion(points[i]) ? overviewState(overviewEntry(places[i])) : cells::outside;
        locations[i] = state == cells::inside ? PointLocation::Inside : PointLocation::Outside;
        descents[size] = {static_cast<std::uint32_t>(i), places[i], tableEntry(places[i])};
        size += state == cells::mixed ? 1 : 0;
    }
    for (std::size_t i = 0; i < size; ++i) {
        prefetch(descents[i].cell);
    }
    return size;
}

/// Takes all descents down, one level at a time, and returns the number of `arrivals`, which is
/// `size`. What locateInCell needs to know of their cells is on the way.
std::size_t PointIndex::descendGroup(Descent* descents, std::size_t size, Arrival* arrivals) const {
    std::size_t arrived = 0;
    for (unsigned shift = tableShift_; size != 0; --shift) {
        std::size_t going = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const Descent at = descents[i];
            const cells::Cell cell = *at.cell;
            if ((cell & cells::kindMask) == cells::split) {
                descents[going] = {at.point, at.place, quarterOf(cell, at.place, shift - 1)};
                prefetch(descents[going].cell);
                ++going;
            } else {
                arrivals[arrived] = {at.point, cell};
                ++arrived;
                if ((cell & cells::kindMask) == cells::leaf) {
                    prefetch(&leaves_[cell >> cells::kindBits]);
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

/// Asks for the edges of a run, or those of a leaf's first polygon if they are few.
void PointIndex::prefetchEdges(cells::Cell cell) const {
    if ((cell & cells::kindMask) == cells::run) {
        const BoundaryVertex* const first = &ringVertices_[cell >> cells::runEdgeShift];
        prefetch(first);
        prefetch(first + (cell >> cells::runSizeShift & cells::runSizeMask));
    } else if ((cell & cells::kindMask) == cells::leaf) {
        const cells::Word* word = &leaves_[cell >> cells::kindBits];
        const cells::Word head = word[1];
        if ((head & (cells::groupWhole | cells::groupQueue)) == 0) {
            for (cells::Word edge = head >> cells::groupBits; edge > 0; --edge) {
                prefetch(&ringVertices_[word[1 + edge] >> cells::edgeBits]);
            }
        }
    }
}

} // namespace veldtrim
