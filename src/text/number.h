/// Numbers in text, read exactly as an input stream reads them, without the stream's cost.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace veldtrim {

/// Reads the number that the characters [at, end) begin with, as the formatted extraction (`>>`) of
/// an input stream over these characters does in the classic locale, whatever the global locale is:
/// leading white space, a sign, digits with one point, an exponent. A NUL is a character like any
/// other.
///
/// Returns true when the extraction sets neither the stream's fail nor its bad state. `value` has
/// the bits that the stream leaves in it, also on false, and `at` moves to the character where the
/// stream stops. `at == end` exactly when the stream sets its end-of-file state. Throws
/// std::bad_alloc only, and only for numbers that are unusual or none.
[[nodiscard]] bool readNumber(const char*& at, const char* end, double& value);
[[nodiscard]] bool readNumber(const char*& at, const char* end, float& value);

/// The same for a decimal integer: white space, a sign, digits.
[[nodiscard]] bool readNumber(const char*& at, const char* end, std::int32_t& value);

namespace detail {

/// 10^0 to 10^18: powers of ten that a double holds exactly.
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

/// Whether a stream may go on reading at such a character right after a number, or fail because of
/// it. An exponent begins with one.
inline bool isDoubtfulAfterNumber(char c) noexcept {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | 0x20U) - 'a') < 26 ||
           c == '+' || c == '-' || c == '.';
}

/// readNumber for numbers of any form.
[[nodiscard]] bool readAnyNumber(const char*& at, const char* end, double& value);

} // namespace detail

// The usual number, at most 18 digits without an exponent, is read here, where it can be inlined.
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
