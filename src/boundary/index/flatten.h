/// The last step of building the point index: storing the upper levels of the tree as grids.
#pragma once

#include "boundary/index/cell.h"
#include "boundary/index/point_index_data.h"

namespace veldtrim {

/// Fills the table and the overview of `data` from the tree below `root`. `deepest` is the number
/// of its finest level.
void flattenTree(Cell root, unsigned deepest, PointIndexData& data);

} // namespace veldtrim
