#include "text/number.h"

#include <algorithm>
#include <charconv>
#include <ios>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>

namespace veldtrim {
namespace {

using detail::isDigit;
using detail::isDoubtful;
using detail::skipBlanks;

/// Streams may keep only some of the digits of a longer number.
constexpr std::ptrdiff_t longestNumber = 600;

/// Reads the number with a stream, which defines the result. Used for everything unusual.
template <typename Value>
bool extractNumber(const char*& at, const char* end, Value& value) {
    std::istringstream stream(std::string(at, end));
    stream.imbue(std::locale::classic());
    stream >> value;
    at += std::streamoff(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
    return !stream.fail();
}

/// Moves `at` behind a sign, if there is one. Returns whether it is a minus.
bool skipSign(const char*& at, const char* end) noexcept {
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    return negative;
}

template <typename Real>
bool readReal(const char*& at, const char* end, Real& value) {
    const char* begin = skipBlanks(at, end);
    if (begin == end) {
        at = end; // a stream fails before it looks for a number
        return false;
    }
    const bool negative = skipSign(begin, end);
    // What begins otherwise could still be a number for from_chars: one more sign, or a word.
    if (begin != end && (isDigit(*begin) || *begin == '.')) {
        Real magnitude = 0;
        const auto [stop, error] = std::from_chars(begin, end, magnitude);
        // After a range error the value is unspecified, and libraries differ on which of the
        // smallest numbers cause one. A stream decides both cases.
        const bool isSure =
            magnitude >= std::numeric_limits<Real>::min() ||
            std::all_of(begin, stop, [](char digit) { return digit == '0' || digit == '.'; });
        if (error == std::errc() && isSure && !isDoubtful(stop, end) &&
            stop - begin <= longestNumber) {
            value = negative ? -magnitude : magnitude;
            at = stop;
            return true;
        }
    }
    return extractNumber(at, end, value);
}

} // namespace

bool detail::divideLong(std::uint64_t digits, std::size_t fractionDigits, double& value) {
    const double power = exactPowersOfTen[fractionDigits];
    const std::uint64_t integer = digits / static_cast<std::uint64_t>(power);
    const std::uint64_t rest = digits % static_cast<std::uint64_t>(power);
    if (integer > exactIntegers || rest > exactIntegers) {
        return false;
    }
    // The fraction is rounded by at most 2^-53 of itself. If the sum is the same for all fractions
    // within more than that, it is that of the exact fraction too.
    constexpr double doubt = 0x1p-51;
    const double fraction = static_cast<double>(rest) / power;
    value = static_cast<double>(integer) + fraction * (1 + doubt);
    return value == static_cast<double>(integer) + fraction * (1 - doubt);
}

bool detail::readAnyNumber(const char*& at, const char* end, double& value) {
    return readReal(at, end, value);
}

bool readNumber(const char*& at, const char* end, float& value) {
    return readReal(at, end, value);
}

bool readNumber(const char*& at, const char* end, std::int32_t& value) {
    const char* now = skipBlanks(at, end);
    const bool negative = skipSign(now, end);
    const char* const first = now;
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    std::uint64_t magnitude = 0;
    detail::readDigits(now, end, magnitude);
    if (now == first || now - first > detail::mostDigits || magnitude > largest ||
        (isDoubtful(now, end) && *now != '.')) {
        return extractNumber(at, end, value);
    }
    value = static_cast<std::int32_t>(negative ? -magnitude : magnitude);
    at = now;
    return true;
}

} // namespace veldtrim
