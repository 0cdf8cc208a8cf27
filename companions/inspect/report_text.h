/// The report for people.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Returns several lines of plain text. Control characters in names are shown as "?". Unless `all`
/// is true, sound files are only counted, and so are sound polygons if there are many.
std::string textOf(const Report& report, bool all);

} // namespace veldtrim
