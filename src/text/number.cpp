#include "text/number.h"

#include <charconv>
#include <ios>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>

namespace veldtrim {
namespace {

using detail::isBlank;
using detail::isDigit;
using detail::isDoubtfulAfterNumber;

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

const char* skipBlanks(const char* at, const char* end) noexcept {
    while (at != end && isBlank(*at)) {
        ++at;
    }
    return at;
}

const char* skipDigits(const char* at, const char* end, bool& allZero) noexcept {
    for (; at != end && isDigit(*at); ++at) {
        allZero = allZero && *at == '0';
    }
    return at;
}

/// Moves `at` behind a sign, if there is one. Returns whether it is a minus.
bool skipSign(const char*& at, const char* end) noexcept {
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    return negative;
}

/// Returns the end of the unsigned number that begins at `begin`, or null if there is none or a
/// stream might read it differently.
const char* findEnd(const char* const begin, const char* end, bool& isZero) noexcept {
    isZero = true;
    const char* at = skipDigits(begin, end, isZero);
    std::ptrdiff_t digitCount = at - begin;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = skipDigits(at, end, isZero);
        digitCount += at - fraction;
    }
    if (digitCount == 0) {
        return nullptr;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        skipSign(at, end);
        const char* const exponent = at;
        bool ignored = false;
        at = skipDigits(at, end, ignored);
        if (at == exponent) {
            return nullptr;
        }
    }
    if ((at != end && isDoubtfulAfterNumber(*at)) || at - begin > longestNumber) {
        return nullptr;
    }
    return at;
}

template <typename Real>
bool readReal(const char*& at, const char* end, Real& value) {
    const char* begin = skipBlanks(at, end);
    if (begin == end) {
        at = end; // a stream fails before it looks for a number
        return false;
    }
    const bool negative = skipSign(begin, end);
    bool isZero = false;
    if (const char* const stop = findEnd(begin, end, isZero)) {
        Real magnitude = 0;
        const auto result = std::from_chars(begin, stop, magnitude);
        // After a range error the value is unspecified, and libraries differ on which of the
        // smallest numbers cause one. A stream decides both cases.
        if (result.ec == std::errc() && result.ptr == stop &&
            (isZero || magnitude >= std::numeric_limits<Real>::min())) {
            value = negative ? -magnitude : magnitude;
            at = stop;
            return true;
        }
    }
    return extractNumber(at, end, value);
}

} // namespace

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
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    std::int64_t magnitude = 0;
    while (now != end && isDigit(*now) && magnitude <= largest) {
        magnitude = magnitude * 10 + (*now - '0');
        ++now;
    }
    if (now == first || magnitude > largest ||
        (now != end && isDoubtfulAfterNumber(*now) && *now != '.')) {
        return extractNumber(at, end, value);
    }
    value = static_cast<std::int32_t>(negative ? -magnitude : magnitude);
    at = now;
    return true;
}

} // namespace veldtrim
