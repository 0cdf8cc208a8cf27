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

/// 10^0 to 10^22: every power of ten that a double holds exactly.
inline constexpr std::array<double, 23> exactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

inline bool isDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') < 10;
}

inline bool isBlank(char c) noexcept {
    return c == ' ' || static_cast<unsigned char>(c - '\t') < 5;
}

/// Streams differ in what they make of a number with such a character right after it.
inline bool isDoubtfulAfterNumber(char c) noexcept {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | 0x20U) - 'a') < 26 ||
           c == '+' || c == '-' || c == '.';
}

/// A number cut into its parts. `digits` is the value of the written digits without the point; it
/// has wrapped around when there are more than 19 of them.
struct DecimalParts {
    const char* begin; ///< first character after the sign
    const char* stop;  ///< first character after the number
    std::uint64_t digits;
    std::ptrdiff_t digitCount;
    std::ptrdiff_t exponent; ///< the number is digits * 10^exponent; beyond +-10000 only roughly
    bool negative;
};

/// Reads the exponent that begins with the "e" at `stop`. False when no digit follows.
bool cutExponent(DecimalParts& parts, const char* end) noexcept;

inline bool cutDecimal(const char* at, const char* end, DecimalParts& parts) noexcept {
    while (at != end && isBlank(*at)) {
        ++at;
    }
    parts.negative = false;
    if (at != end && (*at == '-' || *at == '+')) {
        parts.negative = *at == '-';
        ++at;
    }
    parts.begin = at;
    std::uint64_t digits = 0;
    while (at != end && isDigit(*at)) {
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        ++at;
    }
    parts.digitCount = at - parts.begin;
    parts.exponent = 0;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        while (at != end && isDigit(*at)) {
            digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
            ++at;
        }
        parts.exponent = fraction - at;
        parts.digitCount -= parts.exponent;
    }
    parts.digits = digits;
    parts.stop = at;
    if (parts.digitCount == 0) {
        return false;
    }
    if (at != end && (*at == 'e' || *at == 'E') && !cutExponent(parts, end)) {
        return false;
    }
    return parts.stop == end || !isDoubtfulAfterNumber(*parts.stop);
}

/// The correctly rounded value of any number; false when it is out of the type's range.
bool roundDecimal(const DecimalParts& parts, double& value) noexcept;
bool roundDecimal(const DecimalParts& parts, float& value) noexcept;

} // namespace detail

inline Scan scanDecimal(const char*& at, const char* end, double& value) noexcept {
    detail::DecimalParts parts;
    if (!detail::cutDecimal(at, end, parts)) {
        return Scan::Unusual;
    }
    // W. D. Clinger, "How to Read Floating Point Numbers Accurately" (1990): both operands are
    // exact, so the one division or multiplication rounds correctly.
    constexpr std::uint64_t exactIntegers = std::uint64_t{1} << 53U;
    if (parts.digitCount <= 19 && parts.digits <= exactIntegers && parts.exponent >= -22 &&
        parts.exponent <= 22) {
        const double digits = static_cast<double>(parts.digits);
        const double magnitude =
            parts.exponent < 0
                ? digits / detail::exactPowersOfTen[static_cast<std::size_t>(-parts.exponent)]
                : digits * detail::exactPowersOfTen[static_cast<std::size_t>(parts.exponent)];
        value = parts.negative ? -magnitude : magnitude;
    } else if (!detail::roundDecimal(parts, value)) {
        return Scan::Unusual;
    }
    at = parts.stop;
    return Scan::Number;
}

} // namespace veldtrim
