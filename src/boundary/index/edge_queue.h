/// Edges in the order in which a horizontal line meets them.
#pragma once

#include "boundary/boundary_segment.h"
#include "boundary/index/edge.h"

#include <cstddef>
#include <vector>

namespace veldtrim {

/// Moves edges that can queue up to the front of `edges`, in their order, and returns their number.
///
/// A queue is made of edges that pass through all heights from `yLow` to `yHigh`, from left to
/// right, none crossing another there but for rounding errors: the order is the same at each of
/// these heights. The edges are those of `ringVertices`. Those that do not queue up follow the
/// queue in any order.
std::size_t queueUp(std::vector<IndexEdge>& edges, const std::vector<BoundaryVertex>& ringVertices,
                    double yLow, double yHigh);

} // namespace veldtrim
