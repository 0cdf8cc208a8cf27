/// The last step of building the point index: its tree's upper levels as grids.
#pragma once

#include "boundary/index/cell.h"
#include "boundary/index/point_index_data.h"

namespace veldtrim {

/// Fills the table and the overview of `data` from the tree below `root`, which has `deepest`
/// levels below it.
void flattenTree(Cell root, unsigned deepest, PointIndexData& data);

} // namespace veldtrim
