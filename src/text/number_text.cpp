#include "text/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace veldtrim {

std::string numberText(double value) {
    constexpr double largestPlain = 1e15;
    constexpr double smallestPlain = 1e-5;
    const double size = std::fabs(value);
    const bool isPlain = size == 0.0 || (size >= smallestPlain && size <= largestPlain);
    std::array<char, 32> text{}; // a sign, 17 digits, a point, and 5 zeros or an exponent
    const std::to_chars_result result =
        std::to_chars(text.data(), text.data() + text.size(), value,
                      isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    return {text.data(), result.ptr};
}

} // namespace veldtrim
