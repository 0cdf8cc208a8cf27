/// Finds out whether a point lies in large model boundaries, without a look at all of them.
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

/// A tree of rectangular cells over some polygons, which answers exactly as boundsContain and
/// locatePoint do, polygon by polygon. README.md explains how.
class PointIndex {
public:
    /// Builds the index in time O(n log n) of the number of vertices, and in less than 200 bytes a
    /// vertex, whatever the shape. Holds copies of all it needs. The indices of `polygons` must
    /// name elements of `vertices`.
    PointIndex(std::span<const BoundaryPolygon> polygons,
               const std::vector<BoundaryVertex>& vertices)
        : PointIndex(buildPointIndex(polygons, vertices)) {}

    /// Takes over what buildPointIndex has returned.
    explicit PointIndex(PointIndexData data) : data_(std::move(data)) {}

    /// Where the point lies with respect to one of the polygons that hold it, or `Outside`.
    [[nodiscard]] PointLocation locate(const ElevationPoint& point) const;

    /// `locate` for each of `points`, to the element of `locations` with the same position; there
    /// must be as many.
    ///
    /// Faster than one after the other where the index is larger than the caches: the look-ups of
    /// `batchSize` points go on side by side, so that they wait for the memory together. The method
    /// is group prefetching (S. Chen, A. Ailamaki, P. Gibbons and T. Mowry, "Improving Hash Join
    /// Performance through Prefetching", ICDE 2004).
    void locateEach(std::span<const ElevationPoint> points,
                    std::span<PointLocation> locations) const;

    /// So many that those few of a batch that come near an edge keep the memory busy.
    static constexpr std::size_t batchSize = 256;

    /// Bytes that the index holds.
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

    /// Where the descent to the cells of this place begins.
    [[nodiscard]] const Cell* tableEntry(PointPlace place) const {
        return &data_.table[data_.tableLevel.entryOf(place)];
    }

    /// The quarter of a split cell that holds this place. `shift` is the number of levels from that
    /// quarter to the finest level.
    [[nodiscard]] const Cell* quarterOf(Cell cell, PointPlace place, unsigned shift) const {
        const std::size_t quarter = (place.row >> shift & 1U) << 1U | (place.column >> shift & 1U);
        return &data_.quarters[cell.firstQuarter() + quarter];
    }

    /// The two ends of the edge with this number.
    [[nodiscard]] const BoundaryVertex* endsOf(Word edge) const {
        return &data_.ringVertices[edge];
    }

    /// The undivided cell that holds the point.
    [[nodiscard]] Cell cellAt(const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInCell(Cell cell, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInRun(const Run& run, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInLeaf(const Word* leaf, const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInUnindexed(const ElevationPoint& point) const;

    /// The effect of a queue of edges on the point: Boundary, or whether it toggles.
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
