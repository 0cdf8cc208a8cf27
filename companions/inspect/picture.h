/// A picture of what a run would keep.
#pragma once

#include "inspect/inspect_workspace.h"

#include <string>

namespace veldtrim {

/// Draws polygons, kept and dropped points, scale and legend to the file at `path`, as PNG or,
/// where the path ends in ".svg", as SVG. Throws std::runtime_error, which says why, when the file
/// cannot be written; it may then hold a part. Coarsens the inspection's density, which must be
/// there.
void drawPicture(Inspection& inspection, const std::string& path);

} // namespace veldtrim
