/// Finds likely mistakes in a workspace.
#pragma once

#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Whether so few points would be kept that points and boundaries probably do not fit together.
bool keepsLittle(const Report& report);

/// Returns sentences that say what is probably wrong, the most likely first. The result is empty
/// for a sound workspace.
std::vector<std::string> findHints(const Report& report);

} // namespace veldtrim
