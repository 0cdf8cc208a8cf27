#include "elevation/record.h"

#include "text/decimal.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <istream>
#include <locale>
#include <sstream>
#include <string>

namespace veldtrim {

namespace {

/// A separator must be among so many characters after a field.
constexpr std::ptrdiff_t separatorReach = 100;

/// What a scan of the characters made of a record.
enum class Scanned { Record, NoRecord, Unusual };

/// Reads a record without a stream; leaves what is unusual to the stream.
Scanned scanRecord(std::string_view line, char separator, ElevationPoint& point) {
    if (line.empty()) {
        return Scanned::NoRecord;
    }
    const char* at = line.data();
    const char* const end = at + line.size();
    if (scanDecimal(at, end, point.x) != Scan::Number) {
        return Scanned::Unusual;
    }
    if (at == end) {
        return Scanned::NoRecord;
    }
    if (separator != ' ') {
        if (*at != separator) {
            const auto reach = static_cast<std::size_t>(std::min(separatorReach, end - at));
            at = static_cast<const char*>(std::memchr(at, separator, reach));
            if (at == nullptr) {
                return Scanned::NoRecord;
            }
        }
        ++at;
    }
    if (scanDecimal(at, end, point.y) != Scan::Number) {
        return Scanned::Unusual;
    }
    return at == end ? Scanned::NoRecord : Scanned::Record;
}

/// Skips everything up to and including the separator.
bool skipSeparator(std::istream& fields, char separator) {
    for (std::ptrdiff_t i = 0; i < separatorReach; ++i) {
        char character = 0;
        if (!fields.get(character)) {
            return false;
        }
        if (character == separator) {
            return true;
        }
    }
    return false;
}

/// Reads a number that something must follow on the line.
bool readCoordinate(std::istream& fields, double& value) {
    fields >> value;
    return fields.good();
}

/// Reads any record, by the definition of one.
bool extractRecord(std::string_view line, char format, char separator, ElevationPoint& point) {
    std::istringstream fields{std::string(line)};
    fields.imbue(std::locale::classic());
    const bool needsSeparator = separator != ' ';
    if (format == 'y') {
        int identifier = 0;
        fields >> identifier;
        if (needsSeparator && !skipSeparator(fields, separator)) {
            return false;
        }
    }
    return readCoordinate(fields, point.x) &&
           (!needsSeparator || skipSeparator(fields, separator)) && readCoordinate(fields, point.y);
}

} // namespace

bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point) {
    if (format != 'y') {
        const Scanned scanned = scanRecord(line, separator, point);
        if (scanned != Scanned::Unusual) {
            return scanned == Scanned::Record;
        }
    }
    return extractRecord(line, format, separator, point);
}

} // namespace veldtrim
