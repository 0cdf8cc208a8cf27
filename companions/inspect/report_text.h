/// The report for people.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Plain text, several lines. Control characters in names are shown as "?". Unless `all`, sound
/// files are only counted, and so are sound polygons if there are many.
std::string textOf(const Report& report, bool all);

} // namespace veldtrim
