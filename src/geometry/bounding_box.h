/// An axis-parallel box.
#pragma once

#include <cmath>
#include <limits>

namespace veldtrim {

/// An axis-parallel box that includes its border, in the units of the boundary file.
struct BoundingBox {
    double xMin = 0.0;
    double yMin = 0.0;
    double xMax = 0.0;
    double yMax = 0.0;

    /// Returns a box that contains no point and that `add` can extend.
    static constexpr BoundingBox empty() {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return {infinity, infinity, -infinity, -infinity};
    }

    /// Extends the box to contain the point (x, y). A side that is NaN takes the value of the
    /// coordinate.
    constexpr void add(double x, double y) {
        // std::min and std::max would treat NaN differently: the order of the operands matters.
        xMin = xMin < x ? xMin : x;
        xMax = xMax > x ? xMax : x;
        yMin = yMin < y ? yMin : y;
        yMax = yMax > y ? yMax : y;
    }

    /// Extends the box to contain `other`, which may be empty.
    constexpr void add(const BoundingBox& other) {
        xMin = other.xMin < xMin ? other.xMin : xMin;
        xMax = other.xMax > xMax ? other.xMax : xMax;
        yMin = other.yMin < yMin ? other.yMin : yMin;
        yMax = other.yMax > yMax ? other.yMax : yMax;
    }

    /// Returns the box with all four sides moved outwards by `reach`.
    [[nodiscard]] constexpr BoundingBox widenedBy(double reach) const {
        return {xMin - reach, yMin - reach, xMax + reach, yMax + reach};
    }

    [[nodiscard]] constexpr bool isEmpty() const { return !(xMin <= xMax && yMin <= yMax); }

    [[nodiscard]] bool isFinite() const {
        return std::isfinite(xMin) && std::isfinite(yMin) && std::isfinite(xMax) &&
               std::isfinite(yMax);
    }

    [[nodiscard]] constexpr bool contains(double x, double y) const {
        return xMin <= x && x <= xMax && yMin <= y && y <= yMax;
    }

    [[nodiscard]] constexpr bool contains(const BoundingBox& other) const {
        return xMin <= other.xMin && other.xMax <= xMax && yMin <= other.yMin && other.yMax <= yMax;
    }

    /// Whether the boxes have a point in common, if only on their borders.
    [[nodiscard]] constexpr bool overlaps(const BoundingBox& other) const {
        return xMin <= other.xMax && other.xMin <= xMax && yMin <= other.yMax && other.yMin <= yMax;
    }
};

} // namespace veldtrim
