/// Reads numbers exactly as an input stream does, but faster.
#pragma once

#include "text/eight_characters.h"

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

/// 10^0 to 10^19, which a double represents exactly.
inline constexpr std::array<double, 20> exactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// Any integer of so many digits fits 64 bits.
inline constexpr std::ptrdiff_t mostDigits = 19;

/// A double represents all integers up to this one exactly.
inline constexpr std::uint64_t exactIntegers = std::uint64_t{1} << 53U;

inline bool isDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') < 10;
}

/// White space of the classic locale: space, \t, \n, \v, \f, \r.
inline bool isBlank(char c) noexcept {
    return c == ' ' || static_cast<unsigned char>(c - '\t') < 5;
}

/// Whether there is a character at `at` at which a stream might continue reading after a number, or
/// fail because of it. Exponents begin with such a character.
inline bool isDoubtful(const char* at, const char* end) noexcept {
    constexpr std::uint64_t signsAndPoint = 1ULL << '+' | 1ULL << '-' | 1ULL << '.';
    const auto code = static_cast<unsigned char>(at == end ? '\0' : *at);
    return code < 64 ? (signsAndPoint >> code & 1U) != 0
                     : static_cast<unsigned char>((code | 0x20U) - 'a') < 26;
}

/// Moves `at` behind the digits there and appends them to the decimal number `digits`.
inline void readDigits(const char*& at, const char* end, std::uint64_t& digits) noexcept {
    for (; at != end && isDigit(*at); ++at) {
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    }
}

/// readNumber for numbers of any form.
[[nodiscard]] bool readAnyNumber(const char*& at, const char* end, double& value);

/// Sets `value` to the double nearest to digits / 10^fractionDigits, if that is certain.
[[nodiscard]] bool divideLong(std::uint64_t digits, std::size_t fractionDigits, double& value);

/// readNumber for usual numbers: no white space, no plus, at most 19 digits, no exponent. Returns
/// the end of the number, or null, with `value` unspecified, for any other. What follows the number
/// up to `end` does not matter.
inline const char* readUsualNumber(const char* at, const char* end, double& value) {
    bool negative = false;
    const char* first = at;
    std::uint64_t digits = 0;
    const char* fraction = firstIsLowest && end - at > 8 ? readEightDigits(at, digits) : nullptr;
    if (fraction != nullptr) {
        at += 9;
    } else {
        negative = at != end && *at == '-';
        first = at += negative ? 1 : 0;
        readDigits(at, end, digits);
        fraction = at != end && *at == '.' ? ++at : nullptr;
    }
    if (fraction != nullptr) {
        readDigits(at, end, digits);
    }
    const std::ptrdiff_t digitCount = at - first - (fraction == nullptr ? 0 : 1);
    const auto fractionDigits = static_cast<std::size_t>(fraction == nullptr ? 0 : at - fraction);
    if (digitCount == 0 || digitCount > mostDigits || isDoubtful(at, end)) {
        return nullptr;
    }
    // W. D. Clinger, "How to Read Floating Point Numbers Accurately" (1990): if both operands are
    // exact, the one division rounds correctly.
    value =
        static_cast<double>(static_cast<std::int64_t>(digits)) / exactPowersOfTen[fractionDigits];
    if (digits > exactIntegers && !divideLong(digits, fractionDigits, value)) {
        return nullptr;
    }
    value = negative ? -value : value;
    return at;
}

inline const char* skipBlanks(const char* at, const char* end) noexcept {
    while (at != end && isBlank(*at)) {
        ++at;
    }
    return at;
}

} // namespace detail

inline bool readNumber(const char*& at, const char* end, double& value) {
    const char* const stop = detail::readUsualNumber(detail::skipBlanks(at, end), end, value);
    if (stop == nullptr) {
        return detail::readAnyNumber(at, end, value);
    }
    at = stop;
    return true;
}

} // namespace veldtrim
