#include "inspect/picture/density.h"

#include "geometry/tolerance.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

constexpr double largestCell = 1e18; ///< leaves room for sums of cell numbers

bool counts(double value) {
    return std::fabs(value) <= largestCoordinate;
}

/// Half of a cell number, rounded down.
std::int64_t half(std::int64_t cell) {
    return cell >> 1;
}

/// Adds counts, but not beyond the largest possible value.
void addTo(Density::Counts& sum, const Density::Counts& counts) {
    for (std::size_t i = 0; i < sum.size(); ++i) {
        const std::uint32_t room = UINT32_MAX - sum[i];
        sum[i] += std::min(counts[i], room);
    }
}

} // namespace

/// Places the cells around the first point. They cover less than any scan and grow later.
void Density::begin(double x, double y) {
    constexpr double share = 1e-6;
    const double extent = std::max({std::fabs(x), std::fabs(y), 1.0}) * share;
    size_ = std::exp2(std::floor(std::log2(extent / static_cast<double>(side))));
    firstColumn_ = static_cast<std::int64_t>(std::floor(x / size_)) - side / 2;
    firstRow_ = static_cast<std::int64_t>(std::floor(y / size_)) - side / 2;
}

/// Finds the cell of a point. Returns false if the cells do not reach it yet.
bool Density::find(double x, double y, Cell& cell) const {
    const double column = std::floor(x / size_);
    const double row = std::floor(y / size_);
    if (std::fabs(column) > largestCell || std::fabs(row) > largestCell) {
        return false;
    }
    cell = {static_cast<std::int64_t>(column), static_cast<std::int64_t>(row)};
    return cell.column >= firstColumn_ && cell.column < firstColumn_ + side &&
           cell.row >= firstRow_ && cell.row < firstRow_ + side;
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
    Cell cell{};
    while (!find(x, y, cell)) {
        grow(x, y);
    }
    std::uint32_t& count = cells_[placeOf(cell)][kind];
    count += count != UINT32_MAX ? 1U : 0U;
}

/// Doubles the size of the cells, so that they reach further towards the point.
void Density::grow(double x, double y) {
    constexpr std::int64_t spare = side / 2 - 1;
    Density grown;
    grown.size_ = 2.0 * size_;
    grown.firstColumn_ = half(firstColumn_) - (x < xMin() ? spare : 0);
    grown.firstRow_ = half(firstRow_) - (y < yMin() ? spare : 0);
    forEachFilledCell([&](std::int64_t column, std::int64_t row, const Counts& cell) {
        const Cell larger{half(firstColumn_ + column), half(firstRow_ + row)};
        addTo(grown.cells_[grown.placeOf(larger)], cell);
    });
    size_ = grown.size_;
    firstColumn_ = grown.firstColumn_;
    firstRow_ = grown.firstRow_;
    cells_ = std::move(grown.cells_);
}

/// Whether nearly all cells are filled between the first and the last filled cell of each row. For
/// a regular grid of points, this is true if the cells are at least as wide as its spacing.
bool Density::fillsItsArea() const {
    constexpr double nearlyAll = 0.9;
    std::int64_t filled = 0;
    std::int64_t spanned = 0;
    std::int64_t currentRow = -1;
    std::int64_t last = 0;
    forEachFilledCell([&](std::int64_t column, std::int64_t row, const Counts&) {
        ++filled;
        spanned += row == currentRow ? column - last : 1;
        currentRow = row;
        last = column;
    });
    return static_cast<double>(filled) >= nearlyAll * static_cast<double>(spanned);
}

Density Density::coarsened() const {
    constexpr int mostDoublings = 5;
    Density coarse = *this;
    for (int i = 0; i < mostDoublings && !coarse.fillsItsArea(); ++i) {
        coarse.grow(coarse.xMin(), coarse.yMin());
    }
    return coarse;
}

} // namespace veldtrim
