#include "inspect/polygon_finder.h"

#include "geometry/bounding_box.h"
#include "geometry/tolerance.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

/// How far outside its bounds a polygon is a candidate: farther than it can contain points.
constexpr double margin = 10 * pretestTolerance;

constexpr std::size_t mostCellsInARow = 256;

/// Returns the cell of `value`, as a monotone function: a value between two others is assigned to
/// their cells or one between them.
std::size_t cellOf(double value, double low, double high, std::size_t side) {
    const double share = (value - low) / (high - low) * static_cast<double>(side);
    if (!(share > 0.0)) {
        return 0;
    }
    return share >= static_cast<double>(side) ? side - 1 : static_cast<std::size_t>(share);
}

} // namespace

PolygonFinder::PolygonFinder(const BoundaryModel& model)
    : polygons_(model.polygons()), indexes_(polygons_.size()), vertices_(&model.vertices()) {
    BoundingBox region = BoundingBox::empty();
    for (const BoundaryPolygon& polygon : polygons_) {
        if (polygon.bounds.isFinite()) {
            region.add(polygon.bounds);
        }
    }
    constexpr std::size_t fewPolygons = 4;
    if (polygons_.size() > fewPolygons && !region.isEmpty()) {
        region_ = region;
        side_ =
            std::min(mostCellsInARow,
                     static_cast<std::size_t>(std::sqrt(static_cast<double>(polygons_.size()))));
    }
    sort();
}

std::size_t PolygonFinder::column(double x) const {
    return cellOf(x, region_.xMin, region_.xMax, side_);
}

std::size_t PolygonFinder::row(double y) const {
    return cellOf(y, region_.yMin, region_.yMax, side_);
}

PolygonFinder::Cells PolygonFinder::cellsOf(const BoundingBox& bounds) const {
    if (!bounds.isFinite()) {
        return {0, side_ - 1, 0, side_ - 1};
    }
    return {column(bounds.xMin - margin), column(bounds.xMax + margin), row(bounds.yMin - margin),
            row(bounds.yMax + margin)};
}

/// Assigns the polygons to cells. Reduces the number of cells if large polygons would fill too
/// many.
void PolygonFinder::sort() {
    const std::size_t most = 16 * polygons_.size() + 4096;
    std::size_t members = 0;
    for (;; side_ = std::max<std::size_t>(1, side_ / 2)) {
        members = 0;
        for (const BoundaryPolygon& polygon : polygons_) {
            const Cells cells = cellsOf(polygon.bounds);
            members +=
                (cells.columnHigh - cells.columnLow + 1) * (cells.rowHigh - cells.rowLow + 1);
        }
        if (members <= most || side_ == 1) {
            break;
        }
    }
    std::vector<std::vector<std::uint32_t>> sorted(side_ * side_);
    for (std::size_t i = 0; i < polygons_.size(); ++i) {
        const Cells cells = cellsOf(polygons_[i].bounds);
        for (std::size_t y = cells.rowLow; y <= cells.rowHigh; ++y) {
            for (std::size_t x = cells.columnLow; x <= cells.columnHigh; ++x) {
                sorted[y * side_ + x].push_back(static_cast<std::uint32_t>(i));
            }
        }
    }
    members_.reserve(members);
    for (const auto& cell : sorted) {
        starts_.push_back(static_cast<std::uint32_t>(members_.size()));
        members_.insert(members_.end(), cell.begin(), cell.end());
    }
    starts_.push_back(static_cast<std::uint32_t>(members_.size()));
}

std::span<const std::uint32_t> PolygonFinder::candidates(const ElevationPoint& point) const {
    const std::size_t cell = side_ == 1 ? 0 : row(point.y) * side_ + column(point.x);
    return {members_.data() + starts_[cell], members_.data() + starts_[cell + 1]};
}

} // namespace veldtrim
