/// What to do about a boundary file.
#pragma once

#include "boundary/file/boundary_walk.h"
#include "inspect/boundary_contents.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Why the file at `path` cannot be loaded or has no element TavelDGM, as a predicate: "is empty".
/// Reads the file again.
std::string describeUnloaded(const std::string& path);

/// What to do about the fault; empty if the description of the fault says enough.
std::string adviceOnFault(const BoundaryFault& fault, const std::string& path);

/// Sentences on a boundary file that a run reads, but probably not as its author meant.
std::vector<std::string> adviceOnContents(const BoundaryContents& contents, std::size_t polygons,
                                          const std::string& path);

} // namespace veldtrim
