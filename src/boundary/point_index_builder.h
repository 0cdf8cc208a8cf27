/// Builds the point index of a model; used by nothing else.
#pragma once

#include "boundary/point_index.h"
#include "boundary/point_index_cells.h"
#include "boundary/ring.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim {

/// Splits the plane into cells, level by level from one cell that holds everything.
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

    /// A cell whose groups are not settled yet.
    struct OpenCell {
        std::uint32_t column;
        std::uint32_t row;
        std::uint32_t firstWord; ///< of its groups, in the words of its level
        std::uint32_t endWord;
        std::uint32_t slot; ///< where the cell belongs in the index's quads
    };

    /// The open cells of one level of the tree.
    struct Level {
        std::vector<OpenCell> cells;
        Words words;
    };

    /// A quarter of the cell that is being split.
    struct Child {
        double xCentre = 0.0;
        double yCentre = 0.0;
        bool filled = false; ///< a polygon fills it: nothing else matters
        Words words;
        std::size_t head = 0; ///< position of the current group's head in `words`
        Word odd = 0;         ///< the current group's flag
    };

    void addPolygons();
    bool boundsAreThoseOf(const Ring& ring, const BoundingBox& bounds) const;
    void addRing(const Ring& ring, Word number);
    void addWhole(const BoundaryVertex& from, const BoundaryVertex& to, Word number);
    void addVertex(const BoundaryVertex& vertex);
    void setScale();

    void buildLevel();
    [[nodiscard]] bool isLeaf(const OpenCell& cell) const;
    bool makeRun(const OpenCell& cell);
    void makeLeaf(const OpenCell& cell);
    void split(const OpenCell& cell);
    void splitEdge(Word edge);
    void endGroup(Child& child, bool isWhole);

    void flatten();
    void fillTable(Cell cell, unsigned level, std::size_t column, std::size_t row);

    PointIndex& index_;
    const std::vector<BoundaryPolygon>& polygons_;
    const std::vector<BoundaryVertex>& vertices_;

    double width_ = 0.0; ///< of the cell that holds everything
    double height_ = 0.0;
    double margin_ = 0.0; ///< more than any rounding error of the point test
    unsigned deepest_ = 0;
    unsigned level_ = 0;
    std::size_t wordBudget_ = 0;
    Level current_;
    Level next_;

    // The cell that is being split.
    std::array<double, 3> xLines_{};
    std::array<double, 3> yLines_{};
    std::array<Child, 4> children_;
};

} // namespace veldtrim
