#include "inspect/density.h"

#include "geometry/tolerance.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

constexpr double largestCell = 1e18; ///< far enough from the end of the numbers of cells

bool counts(double value) {
    return std::fabs(value) <= largestCoordinate;
}

/// Half of a cell number, rounded down.
std::int64_t half(std::int64_t cell) {
    return cell >> 1;
}

void addTo(Density::Counts& sum, const Density::Counts& counts) {
    for (std::size_t i = 0; i < sum.size(); ++i) {
        // Beyond what is counted, more is not denser.
        sum[i] = std::max(sum[i], sum[i] + counts[i]);
    }
}

} // namespace

/// A first area around the first point, smaller than that of any scan.
void Density::begin(double x, double y) {
    constexpr double share = 1e-6;
    const double extent = std::max({std::fabs(x), std::fabs(y), 1.0}) * share;
    size_ = std::exp2(std::floor(std::log2(extent / static_cast<double>(side))));
    firstColumn_ = static_cast<std::int64_t>(std::floor(x / size_)) - side / 2;
    firstRow_ = static_cast<std::int64_t>(std::floor(y / size_)) - side / 2;
}

double Density::xMin() const {
    return static_cast<double>(firstColumn_) * size_;
}

double Density::yMin() const {
    return static_cast<double>(firstRow_) * size_;
}

bool Density::place(double x, double y, std::int64_t& column, std::int64_t& row) const {
    const double xCell = std::floor(x / size_);
    const double yCell = std::floor(y / size_);
    if (std::fabs(xCell) > largestCell || std::fabs(yCell) > largestCell) {
        return false;
    }
    column = static_cast<std::int64_t>(xCell) - firstColumn_;
    row = static_cast<std::int64_t>(yCell) - firstRow_;
    return column >= 0 && column < side && row >= 0 && row < side;
}

void Density::add(double x, double y, Kind kind) {
    if (!counts(x) || !counts(y)) {
        return;
    }
    if (++pointCount_ <= mostPoints) {
        points_.push_back({x, y, kind});
    }
    if (size_ == 0.0) {
        begin(x, y);
    }
    std::int64_t column = 0;
    std::int64_t row = 0;
    while (!place(x, y, column, row)) {
        grow(x, y);
    }
    std::uint32_t& count = cells_[static_cast<std::size_t>(row * side + column)][kind];
    count += count != UINT32_MAX ? 1U : 0U;
}

/// Doubles the cells; the area grows towards the point.
void Density::grow(double x, double y) {
    const std::int64_t oldColumn = firstColumn_;
    const std::int64_t oldRow = firstRow_;
    const bool growsLeft = x < xMin();
    const bool growsDown = y < yMin();
    size_ *= 2.0;
    constexpr std::int64_t spare = side / 2 - 1;
    firstColumn_ = half(oldColumn) - (growsLeft ? spare : 0);
    firstRow_ = half(oldRow) - (growsDown ? spare : 0);
    std::vector<Counts> grown(cells_.size());
    for (std::int64_t row = 0; row < side; ++row) {
        const std::int64_t newRow = half(oldRow + row) - firstRow_;
        for (std::int64_t column = 0; column < side; ++column) {
            const Counts& old = at(column, row);
            if (old[Kept] != 0 || old[Dropped] != 0) {
                const std::int64_t newColumn = half(oldColumn + column) - firstColumn_;
                addTo(grown[static_cast<std::size_t>(newRow * side + newColumn)], old);
            }
        }
    }
    cells_ = std::move(grown);
}

void Density::coarsen() {
    // Points of a regular grid fill every cell once cells are as wide as the grid's step.
    constexpr double full = 0.9;
    constexpr int mostDoublings = 5;
    for (int doubling = 0; doubling < mostDoublings; ++doubling) {
        std::size_t filled = 0;
        std::size_t spanned = 0;
        for (std::int64_t row = 0; row < side; ++row) {
            std::int64_t first = side;
            std::int64_t last = -1;
            for (std::int64_t column = 0; column < side; ++column) {
                const Counts& cell = at(column, row);
                if (cell[Kept] != 0 || cell[Dropped] != 0) {
                    ++filled;
                    first = std::min(first, column);
                    last = column;
                }
            }
            spanned += last >= first ? static_cast<std::size_t>(last - first + 1) : 0;
        }
        if (static_cast<double>(filled) >= full * static_cast<double>(spanned)) {
            return;
        }
        grow(xMin(), yMin());
    }
}

} // namespace veldtrim
