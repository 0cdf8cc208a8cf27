/// Sorts edges into the order in which a horizontal line meets them.
#pragma once

#include "boundary/boundary_segment.h"
#include "boundary/index/edge.h"

#include <cstddef>
#include <vector>

namespace veldtrim {

/// Moves edges that form a queue to the front of `edges`, from left to right, and returns their
/// number. The other edges follow in no particular order.
///
/// The edges of a queue pass through all heights from `yLow` to `yHigh` and, apart from rounding
/// errors, do not cross each other there. So their order is the same at each of these heights.
/// Edge numbers refer to `ringVertices`.
std::size_t queueUp(std::vector<IndexEdge>& edges, const std::vector<BoundaryVertex>& ringVertices,
                    double yLow, double yHigh);

} // namespace veldtrim
