/// The nested arrays of a GeoJSON geometry.
#pragma once

#include "area/map_polygon.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace veldtrim {

/// Builds polygons from the arrays and numbers of the member "coordinates", in the order of the
/// text. The numbers lie at the same depth everywhere: 3 in a Polygon, 4 in a MultiPolygon.
class CoordinateArrays {
public:
    void open() {
        ++depth_;
        isEmpty_ = true;
    }

    void close() {
        hasEmptyPart_ = hasEmptyPart_ || (isEmpty_ && depth_ > 1);
        if (depth_ == numberDepth_) {
            closePosition();
        } else if (depth_ + 1 == numberDepth_) {
            rings_.push_back(std::exchange(ring_, {}));
        } else if (depth_ + 2 == numberDepth_) {
            polygons_.push_back({std::exchange(rings_, {})});
        }
        --depth_;
        isEmpty_ = false;
    }

    void number(double value) {
        if (numberDepth_ == 0) {
            numberDepth_ = depth_;
        }
        isRegular_ = isRegular_ && depth_ == numberDepth_;
        if (numbers_ == 0) {
            position_.x = value;
        } else if (numbers_ == 1) {
            position_.y = value;
        }
        ++numbers_;
        isEmpty_ = false;
    }

    /// Something that is neither an array nor a number.
    void other() { isRegular_ = false; }

    [[nodiscard]] bool isOpen() const { return depth_ > 0; }

    /// Whether all arrays have the form of those of a geometry with numbers at that depth.
    [[nodiscard]] bool hasDepth(std::size_t depth) const {
        return isRegular_ && numberDepth_ == depth;
    }

    /// Whether there is no number, or an array inside holds nothing.
    [[nodiscard]] bool isEmpty() const {
        return isRegular_ && (numberDepth_ == 0 || hasEmptyPart_);
    }

    [[nodiscard]] std::vector<MapPolygon>& polygons() { return polygons_; }

private:
    void closePosition() {
        isRegular_ = isRegular_ && numbers_ >= 2;
        ring_.push_back(position_);
        numbers_ = 0;
    }

    std::size_t depth_ = 0;       ///< of open arrays
    std::size_t numberDepth_ = 0; ///< 0 until the first number
    std::size_t numbers_ = 0;     ///< in the current position; only the first two count
    bool isEmpty_ = true;         ///< whether the innermost open array is empty so far
    bool hasEmptyPart_ = false;
    bool isRegular_ = true;
    BoundaryVertex position_;
    MapRing ring_;
    std::vector<MapRing> rings_;
    std::vector<MapPolygon> polygons_;
};

} // namespace veldtrim
