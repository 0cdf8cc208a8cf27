/// Finds out whether a point lies in large model boundaries, without a look at all of them.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/edge_crossing.h"
#include "boundary/index/point_index_cells.h"
#include "boundary/point_location.h"
#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veldtrim {

/// A tree of rectangular cells over the polygons of a model, which answers exactly as
/// boundsContain and locatePoint do, polygon by polygon.
///
/// A cell that no edge touches lies inside or outside as a whole. A cell that few edges touch keeps
/// them, and for each of their polygons the parity of all its other edges; a cell that many edges
/// touch is split in four. The upper levels are flattened to one table, and an overview
/// of it tells at once what lies inside or outside as a whole. "Touches" means with more
/// than the rounding error of the crossing abscissa to spare, so that edges left out of a cell
/// could not have changed a verdict there, whatever the last bits of a computation.
///
/// The idea of cells with a known parity is that of the grid in E. Haines, "Point in Polygon
/// Strategies", Graphics Gems IV, 1994; the tree is a region quadtree (H. Samet, "The Design and
/// Analysis of Spatial Data Structures", 1990).
class PointIndex {
public:
    /// Vertices that walks look at, for each vertex of the model, before the index is built: few
    /// points are not worth it, and for many every walk counts. Building costs about as much as
    /// reading the model has.
    static constexpr std::size_t worthBuildingAfter = 4;

    /// A model of so few polygons and vertices together is walked faster.
    static constexpr std::size_t fewVertices = 24;

    /// Builds the index in time O(n log n) of the number of vertices, and in less than 200 bytes a
    /// vertex, whatever the shape.
    PointIndex(const std::vector<BoundaryPolygon>& polygons,
               const std::vector<BoundaryVertex>& vertices);

    /// Where the point lies with respect to one of the polygons that hold it, or `Outside`.
    /// `polygons` and `vertices` must be those that the index was built from; locatePoint may fill
    /// `segments`.
    PointLocation locate(std::vector<BoundaryPolygon>& polygons,
                         const std::vector<BoundaryVertex>& vertices,
                         const ElevationPoint& point) const;

    /// `locate` for each of `points`, to the element of `locations` with the same position; there
    /// must be as many.
    ///
    /// Faster than one after the other where the index is larger than the caches: the look-ups of
    /// `groupSize` points go on side by side, so that they wait for the memory together. The method
    /// is group prefetching (S. Chen, A. Ailamaki, P. Gibbons and T. Mowry, "Improving Hash Join
    /// Performance through Prefetching", ICDE 2004).
    void locateEach(std::vector<BoundaryPolygon>& polygons,
                    const std::vector<BoundaryVertex>& vertices,
                    std::span<const ElevationPoint> points,
                    std::span<PointLocation> locations) const;

    /// So many that those few of a group that come near an edge keep the memory busy.
    static constexpr std::size_t groupSize = 256;

    /// Bytes that the index holds.
    [[nodiscard]] std::size_t byteSize() const;

private:
    friend class PointIndexBuilder;

    /// Column and row of a point among the cells of the finest level.
    struct Place {
        std::uint32_t column;
        std::uint32_t row;
    };

    [[nodiscard]] bool isInRegion(const ElevationPoint& point) const {
        return point.x >= region_.xMin && point.x <= region_.xMax && point.y >= region_.yMin &&
               point.y <= region_.yMax;
    }

    /// The place of a point in the region.
    [[nodiscard]] Place placeOf(const ElevationPoint& point) const {
        return {static_cast<std::uint32_t>((point.x - region_.xMin) * xScale_),
                static_cast<std::uint32_t>((point.y - region_.yMin) * yScale_)};
    }

    /// The number of the overview's cell with this place.
    [[nodiscard]] std::size_t overviewEntry(Place place) const {
        return (static_cast<std::size_t>(place.row >> overviewShift_) << overviewBits_) +
               (place.column >> overviewShift_);
    }

    /// What the overview says of its cell: cells::outside, cells::inside or cells::mixed.
    [[nodiscard]] unsigned overviewState(std::size_t entry) const {
        return overview_[entry / 4] >> (2 * (entry % 4)) & cells::stateMask;
    }

    /// Where the descent to the cells of this place begins.
    [[nodiscard]] const cells::Cell* tableEntry(Place place) const {
        return &table_[(static_cast<std::size_t>(place.row >> tableShift_) << tableBits_) +
                       (place.column >> tableShift_)];
    }

    /// The quarter of a divided cell that holds this place. `shift` is the number of levels from
    /// that quarter to the finest level.
    [[nodiscard]] const cells::Cell* quarterOf(cells::Cell cell, Place place,
                                               unsigned shift) const {
        const std::size_t quarter = (place.row >> shift & 1U) << 1U | (place.column >> shift & 1U);
        return &quads_[(cell >> cells::kindBits) + quarter];
    }

    /// The undivided cell that holds the point.
    [[nodiscard]] cells::Cell cellAt(const ElevationPoint& point) const;
    PointLocation locateInCell(cells::Cell cell, std::vector<BoundaryPolygon>& polygons,
                               const std::vector<BoundaryVertex>& vertices,
                               const ElevationPoint& point) const;
    [[nodiscard]] PointLocation locateInRun(cells::Cell run, const ElevationPoint& point) const;
    PointLocation locateInLeaf(const cells::Word* word, std::vector<BoundaryPolygon>& polygons,
                               const std::vector<BoundaryVertex>& vertices,
                               const ElevationPoint& point) const;

    PointLocation locateInUnindexed(std::vector<BoundaryPolygon>& polygons,
                                    const std::vector<BoundaryVertex>& vertices,
                                    const ElevationPoint& point) const;

    // The steps of locateEach for a group of points; see point_index_groups.cpp.
    struct Descent;
    struct Arrival;
    std::size_t enterGroup(std::span<const ElevationPoint> points, PointLocation* locations,
                           Descent* descents) const;
    std::size_t descendGroup(Descent* descents, std::size_t size, Arrival* arrivals) const;
    void prefetchEdges(cells::Cell cell) const;

    /// The effect of a leaf's queue of edges on the point: Boundary, or whether it toggles.
    EdgeEffect queueEffect(const cells::Word* edges, std::size_t size,
                           const ElevationPoint& point) const;

    /// The part of the plane with cells; nothing indexed holds a point outside it.
    BoundingBox region_;
    double xScale_ = 0.0; ///< cells of the finest level per unit
    double yScale_ = 0.0;
    double margin_ = 0.0;     ///< more than any rounding error of the point test
    unsigned tableBits_ = 0;  ///< the table has 2^tableBits_ columns, and as many rows
    unsigned tableShift_ = 0; ///< levels between the table and the finest level

    /// The state of the cells of a fine level, two bits each: so small that it stays in the cache,
    /// and most points need no more.
    std::vector<std::uint8_t> overview_;
    unsigned overviewBits_ = 0; ///< columns and rows as for the table
    unsigned overviewShift_ = 0;

    std::vector<cells::Cell> table_;
    std::vector<cells::Cell> quads_;
    std::vector<cells::Word> leaves_;

    /// The vertices of each indexed ring, the first one once more at its end: edge e runs from
    /// ringVertices_[e] to ringVertices_[e + 1].
    std::vector<BoundaryVertex> ringVertices_;

    /// Polygons that cells cannot hold (coordinates that are huge or no numbers), walked each time.
    std::vector<std::uint32_t> unindexed_;
};

} // namespace veldtrim
