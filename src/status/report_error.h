/// Reports failed checks of a run.
#pragma once

#include <string>

namespace veldtrim {

/// Writes `text` as a line to standard output, then sends it as an ErrorMessage with code 2.
/// Returns 1, the result of a run that ends with a failed check.
int reportError(std::string text);

} // namespace veldtrim
