/// Why points and boundaries may lie apart.
#pragma once

#include "geometry/bounding_box.h"

#include <string>
#include <vector>

namespace veldtrim {

/// What may be wrong when points with the bounds `points` and boundaries with the bounds `model`
/// have nothing in common, the likeliest first; none if the bounds overlap or one is empty.
std::vector<std::string> adviceOnBounds(const BoundingBox& points, const BoundingBox& model);

} // namespace veldtrim
