/// The report for people.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Returns several lines of plain text. Control characters in names are shown as "?".
std::string textOf(const Report& report);

} // namespace veldtrim
