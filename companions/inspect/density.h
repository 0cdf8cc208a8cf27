/// How many points lie where, in memory that does not grow with their number.
#pragma once

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

    Density() : cells_(static_cast<std::size_t>(side * side)) {}

    /// Coordinates beyond largestCoordinate and those that are no numbers do not count.
    void add(double x, double y, Kind kind);

    /// The area of the cells; y of a row grows with its number.
    [[nodiscard]] double xMin() const;
    [[nodiscard]] double yMin() const;
    [[nodiscard]] double cellSize() const { return size_; }
    [[nodiscard]] const Counts& at(std::int64_t column, std::int64_t row) const {
        return cells_[static_cast<std::size_t>(row * side + column)];
    }

    struct Point {
        double x;
        double y;
        Kind kind;
    };
    /// So many points are kept as they are, beside the cells.
    static constexpr std::size_t mostPoints = 30000;
    [[nodiscard]] bool hasAllPoints() const { return pointCount_ <= mostPoints; }
    [[nodiscard]] const std::vector<Point>& points() const { return points_; }

    /// Makes the cells so large that in an area evenly filled with points nearly all hold one.
    void coarsen();

private:
    void begin(double x, double y);
    [[nodiscard]] bool place(double x, double y, std::int64_t& column, std::int64_t& row) const;
    void grow(double x, double y);

    double size_ = 0.0;            ///< 0 before the first point
    std::int64_t firstColumn_ = 0; ///< x of the left edge, in cells
    std::int64_t firstRow_ = 0;
    std::vector<Counts> cells_;
    std::vector<Point> points_;
    std::uint64_t pointCount_ = 0;
};

} // namespace veldtrim
