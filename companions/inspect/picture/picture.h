/// A picture of what a run would keep.
#pragma once

#include "inspect/inspection.h"

#include <string>

namespace veldtrim {

/// Draws polygons, kept and dropped points, scale and legend to the file at `path`: as SVG if the
/// path ends in ".svg", else as PNG. The inspection must contain a density.
///
/// Throws std::runtime_error with the reason if the file cannot be written; a part of the file may
/// then exist.
void drawPicture(const Inspection& inspection, const std::string& path);

} // namespace veldtrim
