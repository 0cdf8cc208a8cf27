/// The report for programs.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Returns an indented JSON object with the members that docs/inspect.md lists. Bytes of names that
/// are not UTF-8 become U+FFFD.
std::string jsonOf(const Report& report);

} // namespace veldtrim
