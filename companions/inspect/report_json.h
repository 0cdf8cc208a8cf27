/// The report for programs.
#pragma once

#include "inspect/report.h"

#include <string>

namespace veldtrim {

/// Returns an indented JSON object with the same content as textOf. docs/inspect.schema.json
/// describes it. Bytes of names that are not UTF-8 become U+FFFD.
std::string jsonOf(const Report& report, bool all);

} // namespace veldtrim
