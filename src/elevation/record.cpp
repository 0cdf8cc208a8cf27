#include "elevation/record.h"

#include "text/number.h"

#include <algorithm>
#include <cstring>

namespace veldtrim {

namespace {

/// The separator must be among this many characters after a field.
constexpr std::ptrdiff_t separatorReach = 100;

/// Moves `at` behind the separator. Returns false, with `at` unchanged, if none is within reach.
bool skipSeparator(const char*& at, const char* end, char separator) {
    if (separator == ' ') {
        return true; // the next number skips its leading white space
    }
    const auto reach = static_cast<std::size_t>(std::min(separatorReach, end - at));
    const void* const found = std::memchr(at, separator, reach);
    if (found == nullptr) {
        return false;
    }
    at = static_cast<const char*>(found) + 1;
    return true;
}

} // namespace

RecordReading readRecord(std::string_view line, ElevationHeader header, ElevationPoint& point) {
    const char* at = line.data();
    const char* const end = at + line.size();
    const auto reading = [&](RecordFault fault, const char* place) {
        return RecordReading{fault, static_cast<std::size_t>(place - line.data())};
    };
    const char* field = at;
    if (header.format == 'y') {
        std::int32_t identifier = 0;
        if (!readNumber(at, end, identifier)) {
            return reading(RecordFault::NoIdentifier, field);
        }
        if (!skipSeparator(at, end, header.separator)) {
            return reading(RecordFault::NoSeparatorAfterIdentifier, at);
        }
        field = at;
    }
    if (!readNumber(at, end, point.x)) {
        return reading(RecordFault::NoX, field);
    }
    if (at == end) {
        return reading(RecordFault::NothingAfterX, at);
    }
    if (!skipSeparator(at, end, header.separator)) {
        return reading(RecordFault::NoSeparatorAfterX, at);
    }
    field = at;
    if (!readNumber(at, end, point.y)) {
        return reading(RecordFault::NoY, field);
    }
    return reading(at == end ? RecordFault::NothingAfterY : RecordFault::None, at);
}

bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point) {
    return readRecord(line, {format, separator, 0}, point).fault == RecordFault::None;
}

} // namespace veldtrim
