/// An axis-parallel box.
#pragma once

#include <cmath>
#include <limits>

namespace veldtrim {

/// An axis-parallel box with its border, in the units of the boundary file.
struct BoundingBox {
    double xMin = 0.0;
    double yMin = 0.0;
    double xMax = 0.0;
    double yMax = 0.0;

    /// The box without points, which grows to hold what is added.
    static constexpr BoundingBox empty() {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return {infinity, infinity, -infinity, -infinity};
    }

    /// Grows to hold the point (x, y). A side that is not a number gives way to the next
    /// coordinate.
    constexpr void add(double x, double y) {
        // Not std::min and std::max: where a value is not a number, the operands' order decides.
        xMin = xMin < x ? xMin : x;
        xMax = xMax > x ? xMax : x;
        yMin = yMin < y ? yMin : y;
        yMax = yMax > y ? yMax : y;
    }

    /// Grows to hold `other`; an empty box adds nothing.
    constexpr void add(const BoundingBox& other) {
        xMin = other.xMin < xMin ? other.xMin : xMin;
        xMax = other.xMax > xMax ? other.xMax : xMax;
        yMin = other.yMin < yMin ? other.yMin : yMin;
        yMax = other.yMax > yMax ? other.yMax : yMax;
    }

    /// The box moved outwards by `reach` on all four sides.
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

    /// Whether the boxes have a point in common; touching is enough.
    [[nodiscard]] constexpr bool overlaps(const BoundingBox& other) const {
        return xMin <= other.xMax && other.xMin <= xMax && yMin <= other.yMax && other.yMin <= yMax;
    }
};

} // namespace veldtrim
