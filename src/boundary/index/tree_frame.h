/// The position and size of the cells of the tree.
#pragma once

#include "geometry/bounding_box.h"

#include <cstdint>

namespace veldtrim {

/// A cell's level, and its column and row among the cells of that level. The root is {0, 0, 0}.
struct CellPlace {
    unsigned level = 0;
    std::uint32_t column = 0;
    std::uint32_t row = 0;

    /// Returns the place of quarter `i`: south west, south east, north west, north east.
    [[nodiscard]] constexpr CellPlace quarter(std::uint32_t i) const {
        return {level + 1, 2 * column + i % 2, 2 * row + i / 2};
    }
};

/// The root cell and how finely it can be split.
struct TreeFrame {
    /// Returns the frame for vertices with the bounds `vertices`, which must be finite and not
    /// empty.
    static TreeFrame around(const BoundingBox& vertices);

    [[nodiscard]] BoundingBox boxOf(const CellPlace& place) const;

    /// Cells of the deepest level per unit.
    [[nodiscard]] double xScale() const;
    [[nodiscard]] double yScale() const;

    BoundingBox region;  ///< the bounds and a margin; the root cell is a little larger
    double width = 0.0;  ///< of the root cell
    double height = 0.0; ///< of the root cell
    double margin = 0.0; ///< more than any rounding error of the point test
    unsigned deepest = 0;
};

} // namespace veldtrim
