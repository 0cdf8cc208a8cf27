/// The report for people.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Plain text, several lines. Control characters in names are shown as "?".
std::string textOf(const Report& report);

} // namespace veldtrim
