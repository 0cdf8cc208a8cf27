/// Whether coordinates of a map can be degrees.
#pragma once

#include "geometry/bounding_box.h"

namespace veldtrim {

/// Whether all points in the bounds can be longitudes and latitudes in degrees. Elevation files
/// usually hold metres.
inline bool canBeDegrees(const BoundingBox& bounds) {
    constexpr BoundingBox globe{-180.0, -90.0, 180.0, 90.0};
    return globe.contains(bounds);
}

} // namespace veldtrim
