/// Hints at what is likely wrong with a workspace.
#pragma once

#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Whether so few points would be kept that points and boundaries probably do not fit together.
bool keepsLittle(const Report& report);

/// Sentences on what is likely wrong, the likeliest first; none for a sound workspace.
std::vector<std::string> findHints(const Report& report);

} // namespace veldtrim
