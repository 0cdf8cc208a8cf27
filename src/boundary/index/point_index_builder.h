/// Builds the point index of a model; used by nothing else.
#pragma once

#include "boundary/index/point_index.h"
#include "boundary/index/point_index_cells.h"
#include "boundary/ring.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim {

/// Splits the plane into cells, from one cell that holds everything down to leaves.
///
/// While it is built, a cell is a list of groups, one for each polygon with an edge in it: a head
/// as in a leaf, the polygon's number, the edges as in a leaf. For every point P of the cell, the
/// polygon's verdict is, unless an edge holds P, the parity of
///   the head's flag + the sum over the group's edges of (effect of the edge on P
///                                                        + ends that count and lie below P).
/// Why this is so: an edge outside the cell lies, at the heights of the cell, either to its left,
/// where it has no effect, or to its right, where it toggles for the heights between its ends.
/// Along a chain of such edges these toggles cancel at every vertex. Only where a chain begins at
/// an edge of the cell, at a vertex to the right of the cell and at one of its heights, a term is
/// left that depends on P's height: that end "counts".
class PointIndexBuilder {
public:
    PointIndexBuilder(PointIndex& index, const std::vector<BoundaryPolygon>& polygons,
                      const std::vector<BoundaryVertex>& vertices)
        : index_(index), polygons_(polygons), vertices_(vertices) {}

    void build();

private:
    using Cell = cells::Cell;
    using Word = cells::Word;
    using Words = std::vector<Word>;

    /// Where a cell lies: its column and row among the cells of its level.
    struct Place {
        unsigned level;
        std::uint32_t column;
        std::uint32_t row;
    };

    /// A quarter of a cell that is being split.
    struct Child {
        BoundingBox box;
        double xCentre = 0.0;
        double yCentre = 0.0;
        bool filled = false; ///< a polygon fills it: nothing else matters
        Words groups;
        std::size_t head = 0; ///< position of the current group's head in `groups`
        Word odd = 0;         ///< the current group's flag
    };
    using Children = std::array<Child, 4>;

    Words addPolygons();
    [[nodiscard]] bool isIndexable(const Ring& ring, const BoundingBox& bounds) const;
    void addRing(Words& groups, const Ring& ring, Word number);
    void addWhole(Words& groups, const BoundaryVertex& from, const BoundaryVertex& to, Word number);
    void addVertex(const BoundaryVertex& vertex);
    void setScale();

    Cell buildCell(const Words& groups, const Place& place, std::size_t wordBudget);
    [[nodiscard]] Cell makeRun(const Words& groups) const;
    Cell makeLeaf(const Words& groups, const Place& place);
    Cell split(const Words& groups, const Place& place, std::size_t wordBudget);
    [[nodiscard]] BoundingBox boxOf(const Place& place) const;
    void distribute(const Words& groups, Children& children) const;
    Child* onlyChildOf(Word polygon, Children& children) const;
    void splitEdge(Word edge, Children& children) const;

    void flatten(Cell root);
    void fillTable(Cell cell, const Place& place);
    void fillOverview(Cell cell, const Place& place);

    PointIndex& index_;
    const std::vector<BoundaryPolygon>& polygons_;
    const std::vector<BoundaryVertex>& vertices_;

    double width_ = 0.0; ///< of the cell that holds everything
    double height_ = 0.0;
    double margin_ = 0.0; ///< more than any rounding error of the point test
    unsigned deepest_ = 0;

    /// One set of children for each level of the tree, used again by all cells of that level.
    std::vector<Children> childrenOfLevel_;
};

} // namespace veldtrim
