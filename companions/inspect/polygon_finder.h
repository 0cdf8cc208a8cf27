/// Finds every polygon that contains a point, not only the first.
#pragma once

#include "boundary/index/lazy_point_index.h"
#include "boundary/model/boundary_model.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veldtrim {

/// Finds polygons of a model with a grid over their bounds.
class PolygonFinder {
public:
    /// `model` must outlive the finder and not change.
    explicit PolygonFinder(const BoundaryModel& model);

    /// Returns the positions in the model of the polygons that may contain the point. No other
    /// polygon contains it.
    [[nodiscard]] std::span<const std::uint32_t> candidates(const ElevationPoint& point) const;

    /// Applies the point test of a run to one polygon.
    PointLocation locate(std::uint32_t polygon, const ElevationPoint& point) {
        return indexes_[polygon].locate({&polygons_[polygon], 1}, *vertices_, point);
    }

private:
    struct Cells {
        std::size_t columnLow;
        std::size_t columnHigh;
        std::size_t rowLow;
        std::size_t rowHigh;
    };
    [[nodiscard]] std::size_t column(double x) const;
    [[nodiscard]] std::size_t row(double y) const;
    [[nodiscard]] Cells cellsOf(const BoundingBox& bounds) const;
    void sort();

    std::vector<BoundaryPolygon> polygons_;
    std::vector<LazyPointIndex> indexes_; ///< one for each polygon
    const std::vector<BoundaryVertex>* vertices_;
    BoundingBox region_;
    std::size_t side_ = 1; ///< cells in a row and in a column
    std::vector<std::uint32_t> starts_;
    std::vector<std::uint32_t> members_; ///< those of cell i: from starts_[i] to starts_[i + 1]
};

} // namespace veldtrim
