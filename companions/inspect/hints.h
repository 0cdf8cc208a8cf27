/// What a person should look at when a run keeps little.
#pragma once

#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Whether so little would be kept that the bounds should be held against each other.
bool keepsLittle(const Report& report);

/// Sentences on what is likely wrong, the likeliest first; none for a sound workspace.
std::vector<std::string> findHints(const Report& report);

} // namespace veldtrim
