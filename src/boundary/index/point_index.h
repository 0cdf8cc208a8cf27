/// Locates points in large model boundaries without visiting every polygon.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/edge_crossing.h"
#include "boundary/index/point_index_data.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace veldtrim {

/// A tree of rectangular cells over polygons. Its answers are exactly those of boundsContain and
/// locatePoint, applied polygon by polygon. README.md explains how it works.
class PointIndex {
public:
    /// Builds the index in O(n log n) time for n vertices, with less than 200 bytes per vertex, or
    /// some 100 KB, for any shape. Copies everything that it needs. The indices of `polygons` must
    /// refer to elements of `vertices`. Throws std::bad_alloc if memory runs out.
    PointIndex(std::span<const BoundaryPolygon> polygons,
               const std::vector<BoundaryVertex>& vertices)
        : PointIndex(buildPointIndex(polygons, vertices)) {}

    /// Takes over the result of buildPointIndex.
    explicit PointIndex(PointIndexData data) : data_(std::move(data)) {}

    /// Returns where the point lies with respect to one of the polygons that contain it, or
    /// `Outside` if none does.
    [[nodiscard]] PointLocation locate(const ElevationPoint& point) const;

    /// Stores the result of `locate` for `points[i]` in `locations[i]`. Both spans must have the
    /// same size.
    ///
    /// This is faster than single calls if the index is larger than the caches: the look-ups of
    /// `batchSize` points advance together, so that their waits for memory overlap. The method is
    /// group prefetching (S. Chen, A. Ailamaki, P. Gibbons and T. Mowry, "Improving Hash Join
    /// Performance through Prefetching", ICDE 2004).
    void locateEach(std::span<const ElevationPoint> points,
                    std::span<PointLocation> locations) const;

    /// Large enough that the few points of a batch that are near an edge keep the memory busy.
    static constexpr std::size_t batchSize = 256;

    /// The size of the index in bytes.
    [[nodiscard]] std::size_t byteSize() const;

private:
    [[nodiscard]] bool isInRegion(const ElevationPoint& point) const {
        return data_.region.contains(point.x, point.y);
    }

    /// The place of a point in the region.
    [[nodiscard]] PointPlace placeOf(const ElevationPoint& point) const {
        return {static_cast<std::uint32_t>((point.x - data_.region.xMin) * data_.xScale),
                static_cast<std::uint32_t>((point.y - data_.region.yMin) * data_.yScale)};
    }

    /// Returns the cell at which the descent to this place begins.
    [[nodiscard]] const Cell* tableEntry(PointPlace place) const {
        return &data_.table[data_.tableLevel.entryOf(place)];
    }

    /// Returns the quarter of a split cell that contains this place. `shift` is the number of
    /// levels from that quarter to the finest level.
    [[nodiscard]] const Cell* quarterOf(Cell cell, PointPlace place, unsigned shift) const {
        const std::size_t quarter = (place.row >> shift & 1U) << 1U | (place.column >> shift & 1U);
        return &data_.quarters[cell.firstQuarter() + quarter];
    }

    /// The two ends of the edge with this number.
    [[nodiscard]] const BoundaryVertex* endsOf(Word edge) const {
        return &data_.ringVertices[edge];
    }

    /// Returns the undivided cell that contains the point.
    [[nodiscard]] Cell cellAt(const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInCell(Cell cell, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInRun(const Run& run, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInLeaf(const Word* leaf, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInUnindexed(const ElevationPoint& point) const;

    /// Returns the joint effect of the edges of a queue on the point.
    [[nodiscard]] EdgeEffect queueEffect(const EdgeList& queue, const ElevationPoint& point) const;

    // The steps of locateEach for a batch of points; see point_index_batch.cpp.
    struct Descent;
    struct Arrival;
    std::size_t enterBatch(std::span<const ElevationPoint> points, PointLocation* locations,
                           Descent* descents) const;
    std::size_t descendBatch(Descent* descents, std::size_t size, Arrival* arrivals) const;
    void prefetchEdges(Cell cell) const;

    PointIndexData data_;
};

} // namespace veldtrim
