/// Headers and records of elevation files by their plain definitions: the judges of all that is
/// faster.
#pragma once

#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

namespace veldtrim::fuzz {

struct HeaderRule {
    bool accepted = false;
    char format = 'f';
    std::optional<char> separator; ///< nothing where the line names none
    std::int32_t layout = 0;
};

inline HeaderRule headerRule(const std::string& line) {
    const char first = line.empty() ? '\0' : line.front();
    const bool isNode = first == 'n' || first == 'N';
    if (!isNode && first != 'x' && first != 'X') {
        return {};
    }
    HeaderRule rule{isNode, isNode ? first : 'x', {}, 0};
    const std::size_t place = isNode ? 3 : 1;
    if (line.size() > place) {
        rule.separator = line[place];
        const std::string s(1, line[place]);
        if (line == "x" + s + "y" + s + "z" || line == "X" + s + "Y" + s + "Z") {
            rule.layout = 1;
        } else if (line == "x" + s + "y" + s + "z" + s + "g" ||
                   line == "X" + s + "Y" + s + "Z" + s + "G") {
            rule.layout = 2;
        }
        rule.accepted = isNode || rule.layout != 0;
    }
    return rule;
}

/// Reads x and y step by step from one stream. Returns whether the line is a record.
inline bool extractRecord(const std::string& line, char format, char separator,
                          ElevationPoint& point) {
    std::istringstream stream(line);
    stream.imbue(std::locale::classic());
    const auto seekSeparator = [&] {
        char character = 0;
        for (int i = 0; separator != ' ' && i < 100 && stream.get(character); ++i) {
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
