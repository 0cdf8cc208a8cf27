#include "elevation/record.h"

#include <istream>
#include <locale>
#include <sstream>
#include <string>

namespace veldtrim {

namespace {

/// Skips everything up to and including the separator, which must be among the next hundred
/// characters.
bool skipSeparator(std::istream& fields, char separator) {
    constexpr int most = 100;
    for (int i = 0; i < most; ++i) {
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

} // namespace

bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point) {
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

} // namespace veldtrim
