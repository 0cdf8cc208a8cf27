/// One step of building the tree: distributing the groups of a cell to its quarters.
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
    /// Makes this an empty quarter with the given box.
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
    bool isFilled = false; ///< a polygon covers all of it; nothing else matters
    GroupList groups;
    bool odd = false; ///< the parity of the open group
};

/// The quarters in the order of CellPlace::quarter.
using Quarters = std::array<Quarter, 4>;

/// Splits the groups of cells. The arguments of the constructor must outlive it.
class CellSplitter {
public:
    CellSplitter(std::span<const BoundaryPolygon> polygons,
                 const std::vector<BoundaryVertex>& ringVertices, double margin)
        : polygons_(polygons), ringVertices_(ringVertices), margin_(margin) {}

    /// Fills `quarters`, which must be empty, with their groups: for each polygon, the edges near
    /// the quarter and the parity of the other edges.
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
