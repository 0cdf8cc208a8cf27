#include "inspect/polygon_finder.h"

#include "inspect/report.h"

#include <algorithm>
#include <cmath>

namespace veldtrim {

namespace {

/// More than the tolerance of the point test's own look at the bounds.
constexpr double margin = 1e-5;

constexpr std::size_t mostCellsInARow = 256;

/// A monotone function of `value`: what lies between two values lies between their cells.
std::size_t cellOf(double value, double low, double high, std::size_t side) {
    const double share = (value - low) / (high - low) * static_cast<double>(side);
    if (!(share > 0.0)) {
        return 0;
    }
    return share >= static_cast<double>(side) ? side - 1 : static_cast<std::size_t>(share);
}

bool isFinite(const BoundingBox& box) {
    return std::isfinite(box.xMin) && std::isfinite(box.xMax) && std::isfinite(box.yMin) &&
           std::isfinite(box.yMax);
}

} // namespace

PolygonFinder::PolygonFinder(const BoundaryModel& model) {
    PointBounds region;
    models_.resize(model.polygons().size());
    for (std::size_t i = 0; i < models_.size(); ++i) {
        BoundaryPolygon polygon = model.polygons()[i];
        // A vertex that the ring names twice stays one vertex.
        const bool namedTwice = polygon.vertexIndices.size() > 1 &&
                                polygon.vertexIndices.front() == polygon.vertexIndices.back();
        std::vector<std::int32_t> own;
        for (const std::int32_t index : polygon.vertexIndices) {
            own.push_back(models_[i].addVertex(model.vertices()[static_cast<std::size_t>(index)]));
        }
        if (namedTwice) {
            own.back() = own.front();
        }
        polygon.vertexIndices = std::move(own);
        models_[i].addPolygon(polygon);
        if (isFinite(polygon.bounds)) {
            region.add(polygon.bounds);
        }
    }
    constexpr std::size_t fewPolygons = 4;
    if (models_.size() > fewPolygons && !region.isEmpty()) {
        region_ = region.box;
        side_ = std::min(mostCellsInARow,
                         static_cast<std::size_t>(std::sqrt(static_cast<double>(models_.size()))));
    }
    sort(model);
}

std::size_t PolygonFinder::column(double x) const {
    return cellOf(x, region_.xMin, region_.xMax, side_);
}

std::size_t PolygonFinder::row(double y) const {
    return cellOf(y, region_.yMin, region_.yMax, side_);
}

PolygonFinder::Cells PolygonFinder::cellsOf(const BoundingBox& bounds) const {
    if (!isFinite(bounds)) {
        return {0, side_ - 1, 0, side_ - 1};
    }
    return {column(bounds.xMin - margin), column(bounds.xMax + margin), row(bounds.yMin - margin),
            row(bounds.yMax + margin)};
}

/// Sorts the polygons into the cells; where large ones would fill too many, into fewer.
void PolygonFinder::sort(const BoundaryModel& model) {
    const std::size_t most = 16 * models_.size() + 4096;
    std::size_t members = 0;
    for (;; side_ = std::max<std::size_t>(1, side_ / 2)) {
        members = 0;
        for (const BoundaryPolygon& polygon : model.polygons()) {
            const Cells cells = cellsOf(polygon.bounds);
            members +=
                (cells.columnHigh - cells.columnLow + 1) * (cells.rowHigh - cells.rowLow + 1);
        }
        if (members <= most || side_ == 1) {
            break;
        }
    }
    std::vector<std::vector<std::uint32_t>> sorted(side_ * side_);
    for (std::size_t i = 0; i < models_.size(); ++i) {
        const Cells cells = cellsOf(model.polygons()[i].bounds);
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
