#include "numbers/decimal.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace veldtrim {
namespace {

// Beyond this length streams may keep only some of the digits.
constexpr std::ptrdiff_t longestNumber = 600;

template <typename Real>
bool round(const detail::DecimalParts& parts, Real& value) noexcept {
    if (parts.stop - parts.begin > longestNumber) {
        return false;
    }
    Real magnitude = 0;
    const auto result = std::from_chars(parts.begin, parts.stop, magnitude);
    // A range error leaves the value open, and which of the smallest numbers are one is a matter of
    // the library: a stream decides on both.
    if (result.ec != std::errc() || result.ptr != parts.stop) {
        return false;
    }
    if (parts.digits != 0 && magnitude < std::numeric_limits<Real>::min()) {
        return false;
    }
    value = parts.negative ? -magnitude : magnitude;
    return true;
}

} // namespace

namespace detail {

bool cutExponent(DecimalParts& parts, const char* end) noexcept {
    const char* at = parts.stop + 1;
    bool negative = false;
    if (at != end && (*at == '-' || *at == '+')) {
        negative = *at == '-';
        ++at;
    }
    const char* const first = at;
    std::ptrdiff_t exponent = 0;
    while (at != end && isDigit(*at)) {
        if (exponent < 10000) {
            exponent = exponent * 10 + (*at - '0');
        }
        ++at;
    }
    parts.exponent += negative ? -exponent : exponent;
    parts.stop = at;
    return at != first;
}

bool roundDecimal(const DecimalParts& parts, double& value) noexcept {
    return round(parts, value);
}

bool roundDecimal(const DecimalParts& parts, float& value) noexcept {
    return round(parts, value);
}

} // namespace detail

Scan scanDecimal(const char*& at, const char* end, float& value) noexcept {
    detail::DecimalParts parts;
    if (!detail::cutDecimal(at, end, parts) || !detail::roundDecimal(parts, value)) {
        return Scan::Unusual;
    }
    at = parts.stop;
    return Scan::Number;
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
