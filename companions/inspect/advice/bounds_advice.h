/// Advice on points and boundaries that do not overlap.
#pragma once

#include "geometry/bounding_box.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Returns what may be wrong if points with the bounds `points` and boundaries with the bounds
/// `model` do not overlap, the most likely cause first, with the command that changes the boundary
/// file at `path` accordingly. The result is empty if the bounds overlap or one of them is empty.
std::vector<std::string> adviceOnBounds(const BoundingBox& points, const BoundingBox& model,
                                        const std::string& path);

} // namespace veldtrim
