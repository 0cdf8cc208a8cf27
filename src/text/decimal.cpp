#include "text/decimal.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace veldtrim {
namespace {

// Beyond this length streams may keep only some of the digits.
constexpr std::ptrdiff_t longestNumber = 600;

/// A number in the text.
struct Number {
    const char* begin = nullptr; ///< first character after the sign
    const char* stop = nullptr;  ///< first character after the number
    bool negative = false;
    bool isZero = true;
};

const char* skipDigits(const char* at, const char* end, bool& allZero) noexcept {
    for (; at != end && detail::isDigit(*at); ++at) {
        allZero = allZero && *at == '0';
    }
    return at;
}

/// Finds the number that begins at `at`; false when there is none, or one that streams may differ
/// on.
bool findNumber(const char* at, const char* end, Number& number) noexcept {
    while (at != end && detail::isBlank(*at)) {
        ++at;
    }
    number.negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    number.begin = at;
    at = skipDigits(at, end, number.isZero);
    std::ptrdiff_t digitCount = at - number.begin;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = skipDigits(at, end, number.isZero);
        digitCount += at - fraction;
    }
    if (digitCount == 0) {
        return false;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && (*at == '-' || *at == '+')) {
            ++at;
        }
        const char* const exponent = at;
        bool ignored = false;
        at = skipDigits(at, end, ignored);
        if (at == exponent) {
            return false;
        }
    }
    number.stop = at;
    return (at == end || !detail::isDoubtfulAfterNumber(*at)) && at - number.begin <= longestNumber;
}

template <typename Real>
Scan scanAny(const char*& at, const char* end, Real& value) noexcept {
    // Filled by findNumber: NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    Number number;
    if (!findNumber(at, end, number)) {
        return Scan::Unusual;
    }
    Real magnitude = 0;
    const auto result = std::from_chars(number.begin, number.stop, magnitude);
    // A range error leaves the value open, and which of the smallest numbers are one is a matter of
    // the library: a stream decides on both.
    if (result.ec != std::errc() || result.ptr != number.stop ||
        (!number.isZero && magnitude < std::numeric_limits<Real>::min())) {
        return Scan::Unusual;
    }
    value = number.negative ? -magnitude : magnitude;
    at = number.stop;
    return Scan::Number;
}

} // namespace

Scan detail::scanAnyDecimal(const char*& at, const char* end, double& value) noexcept {
    return scanAny(at, end, value);
}

Scan scanDecimal(const char*& at, const char* end, float& value) noexcept {
    return scanAny(at, end, value);
}

Scan scanInteger(const char*& at, const char* end, std::int32_t& value) noexcept {
    const char* now = at;
    while (now != end && detail::isBlank(*now)) {
        ++now;
    }
    bool negative = false;
    if (now != end && (*now == '-' || *now == '+')) {
        negative = *now == '-';
        ++now;
    }
    const char* const first = now;
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    std::int64_t magnitude = 0;
    while (now != end && detail::isDigit(*now) && magnitude <= largest) {
        magnitude = magnitude * 10 + (*now - '0');
        ++now;
    }
    if (now == first || magnitude > largest ||
        (now != end && detail::isDoubtfulAfterNumber(*now) && *now != '.')) {
        return Scan::Unusual;
    }
    value = static_cast<std::int32_t>(negative ? -magnitude : magnitude);
    at = now;
    return Scan::Number;
}

} // namespace veldtrim
