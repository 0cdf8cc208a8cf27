/// Counts points per area, in memory that does not grow with their number.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim {

/// Counts kept and dropped points in square cells. If a point lies outside all cells, their size
/// doubles: each four are merged into one.
class Density {
public:
    enum Kind : std::uint8_t { Kept, Dropped };
    using Counts = std::array<std::uint32_t, 2>;

    /// Number of cells in a row and in a column.
    static constexpr std::int64_t side = 1024;

    Density() : cells_(static_cast<std::size_t>(side * side)) {}

    /// Counts a point. Ignores it if a coordinate exceeds largestCoordinate or is not a number.
    void add(double x, double y, Kind kind);

    /// The lower left corner of the cells. Row numbers increase with y.
    [[nodiscard]] double xMin() const { return static_cast<double>(firstColumn_) * size_; }
    [[nodiscard]] double yMin() const { return static_cast<double>(firstRow_) * size_; }
    [[nodiscard]] double cellSize() const { return size_; }

    /// Calls `visit` with the column, row and counts of every cell that contains a point.
    template <typename Visit>
    void forEachFilledCell(Visit visit) const {
        for (std::int64_t row = 0; row < side; ++row) {
            for (std::int64_t column = 0; column < side; ++column) {
                const Counts& cell = cells_[static_cast<std::size_t>(row * side + column)];
                if (cell[Kept] != 0 || cell[Dropped] != 0) {
                    visit(column, row, cell);
                }
            }
        }
    }

    struct Point {
        double x;
        double y;
        Kind kind;
    };
    /// Up to this number, points are stored as well as counted.
    static constexpr std::size_t mostPoints = 30000;
    [[nodiscard]] bool hasAllPoints() const { return pointCount_ <= mostPoints; }
    [[nodiscard]] const std::vector<Point>& points() const { return points_; }

    /// Returns a copy with cells so large that nearly all cells in areas of evenly spread points
    /// are filled.
    [[nodiscard]] Density coarsened() const;

private:
    /// A cell, numbered by its position in the plane. Cell 0 begins at the coordinate 0.
    struct Cell {
        std::int64_t column;
        std::int64_t row;
    };
    void begin(double x, double y);
    [[nodiscard]] bool find(double x, double y, Cell& cell) const;
    [[nodiscard]] std::size_t placeOf(Cell cell) const {
        return static_cast<std::size_t>((cell.row - firstRow_) * side + cell.column - firstColumn_);
    }
    void grow(double x, double y);
    [[nodiscard]] bool fillsItsArea() const;

    double size_ = 0.0;            ///< of a cell; 0 before the first point
    std::int64_t firstColumn_ = 0; ///< number of the leftmost column in the plane
    std::int64_t firstRow_ = 0;
    std::vector<Counts> cells_;
    std::vector<Point> points_;
    std::uint64_t pointCount_ = 0;
};

} // namespace veldtrim
