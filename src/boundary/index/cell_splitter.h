/// One step of building the tree: what the quarters of a cell hold.
#pragma once

#include "boundary/boundary_polygon.h"
#include "boundary/index/group.h"
#include "boundary/index/tree_frame.h"
#include "geometry/bounding_box.h"

#include <array>
#include <span>
#include <vector>

namespace veldtrim {

/// A quarter of a cell that is being split.
struct Quarter {
    /// Makes it the empty quarter with this box.
    void reset(const BoundingBox& newBox) {
        box = newBox;
        xCentre = 0.5 * (box.xMin + box.xMax);
        yCentre = 0.5 * (box.yMin + box.yMax);
        isFilled = false;
        groups.clear();
    }

    BoundingBox box;
    double xCentre = 0.0;
    double yCentre = 0.0;
    bool isFilled = false; ///< a polygon fills it: nothing else matters
    GroupList groups;
    bool odd = false; ///< the parity of the open group
};

/// The quarters in the order of CellPlace::quarter.
using Quarters = std::array<Quarter, 4>;

/// Splits the groups of cells. What it is made of must outlive it.
class CellSplitter {
public:
    CellSplitter(std::span<const BoundaryPolygon> polygons,
                 const std::vector<BoundaryVertex>& ringVertices, double margin)
        : polygons_(polygons), ringVertices_(ringVertices), margin_(margin) {}

    /// Gives each of `quarters`, which are empty, the groups of its own: the edges in it, and the
    /// parity of all others.
    void split(const GroupList& groups, Quarters& quarters) const;

private:
    [[nodiscard]] Quarter* onlyQuarterOf(const Group& group, Quarters& quarters) const;
    void splitGroup(const Group& group, Quarters& quarters) const;
    void splitEdge(IndexEdge edge, Quarters& quarters) const;

    std::span<const BoundaryPolygon> polygons_;
    const std::vector<BoundaryVertex>& ringVertices_;
    double margin_;
};

} // namespace veldtrim
