/// Reads numbers exactly as an input stream does, but faster.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace veldtrim {

/// Reads the number at the beginning of the characters [at, end) as the formatted extraction (`>>`)
/// of an input stream does in the classic locale, regardless of the global locale: leading white
/// space, a sign, digits with at most one point, an exponent. NUL is a character like any other.
///
/// Returns true if the extraction sets neither the fail nor the bad state of the stream. `value`
/// gets the bits that the stream leaves in it, even if the result is false, and `at` moves to the
/// character where the stream stops. `at == end` exactly if the stream sets its end-of-file state.
/// Throws only std::bad_alloc, and only if the number is unusual or missing.
[[nodiscard]] bool readNumber(const char*& at, const char* end, double& value);
[[nodiscard]] bool readNumber(const char*& at, const char* end, float& value);

/// The same for a decimal integer: white space, a sign, digits.
[[nodiscard]] bool readNumber(const char*& at, const char* end, std::int32_t& value);

namespace detail {

/// 10^0 to 10^18, which a double represents exactly.
inline constexpr std::array<double, 19> exactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};

inline bool isDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') < 10;
}

/// White space of the classic locale: space, \t, \n, \v, \f, \r.
inline bool isBlank(char c) noexcept {
    return c == ' ' || static_cast<unsigned char>(c - '\t') < 5;
}

/// Whether a stream might continue reading at this character after a number, or fail because of it.
/// Exponents begin with such a character.
inline bool isDoubtfulAfterNumber(char c) noexcept {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | 0x20U) - 'a') < 26 ||
           c == '+' || c == '-' || c == '.';
}

/// readNumber for numbers of any form.
[[nodiscard]] bool readAnyNumber(const char*& at, const char* end, double& value);

} // namespace detail

// Reads usual numbers, with at most 18 digits and no exponent, so that this can be inlined.
inline bool readNumber(const char*& at, const char* end, double& value) {
    const char* now = at;
    while (now != end && detail::isBlank(*now)) {
        ++now;
    }
    const bool negative = now != end && *now == '-';
    now += negative ? 1 : 0;
    std::uint64_t digits = 0;
    const char* const integer = now;
    while (now != end && detail::isDigit(*now)) {
        digits = digits * 10 + static_cast<std::uint64_t>(*now++ - '0');
    }
    std::ptrdiff_t digitCount = now - integer;
    std::ptrdiff_t fractionDigits = 0;
    if (now != end && *now == '.') {
        const char* const fraction = ++now;
        while (now != end && detail::isDigit(*now)) {
            digits = digits * 10 + static_cast<std::uint64_t>(*now++ - '0');
        }
        fractionDigits = now - fraction;
        digitCount += fractionDigits;
    }
    constexpr std::ptrdiff_t mostDigits = 18; // more could overflow
    constexpr std::uint64_t exactIntegers = std::uint64_t{1} << 53U;
    if (digitCount == 0 || digitCount > mostDigits || digits > exactIntegers ||
        (now != end && detail::isDoubtfulAfterNumber(*now))) {
        return detail::readAnyNumber(at, end, value);
    }
    // W. D. Clinger, "How to Read Floating Point Numbers Accurately" (1990): both operands are
    // exact, so the one division rounds correctly.
    const double magnitude = static_cast<double>(digits) /
                             detail::exactPowersOfTen[static_cast<std::size_t>(fractionDigits)];
    value = negative ? -magnitude : magnitude;
    at = now;
    return true;
}

} // namespace veldtrim
