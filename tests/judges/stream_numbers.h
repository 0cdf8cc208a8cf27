/// Numbers and records as formatted stream extraction in the classic locale reads them: the
/// definition that all faster reading must keep to.
#pragma once

#include "geometry/elevation_point.h"

#include <bit>
#include <cstdint>
#include <istream>
#include <locale>
#include <sstream>
#include <string>

namespace veldtrim::fuzz {

template <typename Value>
bool extractFrom(const std::string& text, Value& value) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> value;
    return !stream.fail();
}

inline bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool extractRecord(const std::string& line, char format, char separator,
                          ElevationPoint& point) {
    std::istringstream stream(line);
    stream.imbue(std::locale::classic());
    const auto seekSeparator = [&] {
        char character = 0;
        for (int i = 0; separator != ' ' && i < 100; ++i) {
            if (!stream.get(character)) {
                return false;
            }
            if (character == separator) {
                return true;
            }
        }
        return separator == ' ';
    };
    if (format == 'y') {
        int identifier = 0;
        stream >> identifier;
        if (!seekSeparator()) {
            return false;
        }
    }
    return (stream >> point.x).good() && seekSeparator() && (stream >> point.y).good();
}

} // namespace veldtrim::fuzz
