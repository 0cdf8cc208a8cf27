/// Writes numbers as text that reads back as the same number.
#pragma once

#include <string>

namespace veldtrim {

/// Returns the shortest decimal text that reads back as the finite number `value`, to the last bit.
/// It has an exponent only if the magnitude is more than 1e15, or less than 1e-5 and not 0.
std::string numberText(double value);

} // namespace veldtrim
