/// Describes why a boundary file cannot be read.
#pragma once

#include "boundary/file/boundary_walk.h"

#include <string>

namespace veldtrim {

/// Returns why the file at `path` cannot be loaded or has no element TavelDGM, as a predicate such
/// as "is empty". Reads the file again.
std::string describeUnloaded(const std::string& path);

/// Returns the fault as a predicate such as "has no element TavelDGM below its root element".
std::string describeFault(const BoundaryFault& fault);

/// The same for the file at `path`, which is read again if that tells more.
std::string describeFault(const BoundaryFault& fault, const std::string& path);

/// Returns the name of the root element of the XML file at `path`; empty if it cannot be loaded.
std::string nameOfRoot(const std::string& path);

} // namespace veldtrim
