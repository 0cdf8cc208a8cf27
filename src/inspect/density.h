/// How many points lie where, in memory that does not grow with their number.
#pragma once

#include "boundary/boundary_polygon.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim {

/// Counts of kept and of dropped points in square cells. The cells grow, four becoming one, as the
/// area does.
class Density {
public:
    enum Kind : std::uint8_t { Kept, Dropped };
    using Counts = std::array<std::uint32_t, 2>;

    /// The most cells in a row and in a column.
    static constexpr std::int64_t side = 1024;

    /// Points outside of `bounds` are welcome; those inside need no growing.
    explicit Density(const BoundingBox& bounds);

    /// Coordinates of more than 1e15 and those that are no numbers do not count.
    void add(double x, double y, Kind kind);

    /// The area of the cells; y of a row grows with its number.
    [[nodiscard]] double xMin() const;
    [[nodiscard]] double yMin() const;
    [[nodiscard]] double cellSize() const { return size_; }
    [[nodiscard]] const Counts& at(std::int64_t column, std::int64_t row) const {
        return cells_[static_cast<std::size_t>(row * side + column)];
    }

    /// Makes the cells so large that those of an area evenly filled with points have one each.
    void coarsen();

private:
    [[nodiscard]] bool place(double x, double y, std::int64_t& column, std::int64_t& row) const;
    void grow(double x, double y);

    double size_ = 1.0;
    std::int64_t firstColumn_ = 0; ///< x of the left edge, in cells
    std::int64_t firstRow_ = 0;
    std::vector<Counts> cells_;
};

} // namespace veldtrim
