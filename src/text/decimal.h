#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Numbers of a text, read as the formatted extraction (`>>`) of an input stream in the classic
/// locale reads them, without the stream's cost. No operation here throws or allocates.
namespace veldtrim {

/// What a scan found.
enum class Scan : std::uint8_t {
    /// A number; value and stop position are the stream's.
    Number,
    /// No number, or one whose treatment is best left to a stream. Says nothing about its verdict:
    /// the caller repeats the extraction with a stream.
    Unusual
};

/// Reads one number from the characters [at, end) as `stream >> value` would: leading white space
/// of the classic locale (space, \t, \n, \v, \f, \r), a sign, digits with one point, an exponent.
///
/// On `Scan::Number` a stream over [at, end) would have delivered a value of the same bits with
/// neither its fail nor its bad state set, `at` is moved to the character where the stream would
/// have stopped, and `at == end` exactly when the stream would have set its end-of-file state. A
/// NUL is a character like any other.
///
/// On `Scan::Unusual` `at` and `value` are unchanged. That is the answer for everything on which a
/// stream fails, and, rarely, for numbers that it would read: followed directly by a letter, a sign
/// or another point, out of range or too small for the type, or longer than 600 characters.
[[nodiscard]] Scan scanDecimal(const char*& at, const char* end, double& value) noexcept;
[[nodiscard]] Scan scanDecimal(const char*& at, const char* end, float& value) noexcept;

/// The same for a decimal integer: white space, a sign, digits.
[[nodiscard]] Scan scanInteger(const char*& at, const char* end, std::int32_t& value) noexcept;

namespace detail {

/// 10^0 to 10^18: powers of ten that a double holds exactly.
inline constexpr std::array<double, 19> exactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};

inline bool isDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') < 10;
}

inline bool isBlank(char c) noexcept {
    return c == ' ' || static_cast<unsigned char>(c - '\t') < 5;
}

/// Streams differ in what they make of a number with such a character right after it; an exponent
/// begins with one.
inline bool isDoubtfulAfterNumber(char c) noexcept {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | 0x20U) - 'a') < 26 ||
           c == '+' || c == '-' || c == '.';
}

/// scanDecimal for numbers of any form.
[[nodiscard]] Scan scanAnyDecimal(const char*& at, const char* end, double& value) noexcept;

} // namespace detail

// The usual number, at most 18 digits without an exponent, is read here, where it can be inlined.
inline Scan scanDecimal(const char*& at, const char* end, double& value) noexcept {
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
        return detail::scanAnyDecimal(at, end, value);
    }
    // W. D. Clinger, "How to Read Floating Point Numbers Accurately" (1990): both operands are
    // exact, so the one division rounds correctly.
    const double magnitude = static_cast<double>(digits) /
                             detail::exactPowersOfTen[static_cast<std::size_t>(fractionDigits)];
    value = negative ? -magnitude : magnitude;
    at = now;
    return Scan::Number;
}

} // namespace veldtrim
