/// Advice on boundary files.
#pragma once

#include "boundary/file/boundary_walk.h"
#include "inspect/boundary_contents.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Returns what to do about the fault; empty if the description of the fault says enough.
std::string adviceOnFault(const BoundaryFault& fault, const std::string& path);

/// Returns sentences about a boundary file that a run would read, but probably not as intended.
/// `polygons` is the number of polygons read.
std::vector<std::string> adviceOnContents(const BoundaryContents& contents, std::size_t polygons,
                                          const std::string& path);

} // namespace veldtrim
