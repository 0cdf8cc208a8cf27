/// The report for programs.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// One JSON object, indented, that says what textOf says. docs/inspect.schema.json describes it.
/// Bytes of names that are not UTF-8 become U+FFFD.
std::string jsonOf(const Report& report, bool all);

} // namespace veldtrim
