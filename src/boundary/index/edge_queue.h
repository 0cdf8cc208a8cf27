/// Edges in the order in which a horizontal line meets them.
#pragma once

#include "boundary/boundary_segment.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldtrim {

/// Moves edges that can queue up to the front of `edges`, in their order, and returns their number.
///
/// A queue is made of edges that pass through all heights from `yLow` to `yHigh`, from left to
/// right, none crossing another there but for rounding errors: the order is the same at each of
/// these heights. An edge is a word whose upper bits (see point_index_cells.h) number its first
/// end in `ringVertices`; the next vertex is its other end. Edges that do not queue up follow the
/// queue in any order.
std::size_t queueUp(std::vector<std::uint32_t>& edges,
                    const std::vector<BoundaryVertex>& ringVertices, double yLow, double yHigh);

} // namespace veldtrim
