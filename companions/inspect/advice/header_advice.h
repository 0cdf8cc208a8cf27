/// What to do about a header line.
#pragma once

#include "elevation/header.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// A sentence on a file whose first line is no accepted header, with the command that mends it if
/// there is one. `start` is the beginning of the file at `path`, whole lines of text.
std::string adviceOnHeader(std::string_view start, const std::string& path);

/// The command that replaces the header line of the file at `path` by x, y, z, or by x, y, z, g,
/// with this separator.
std::string replaceHeader(char separator, bool hasG, const std::string& path);

/// The command that does the same and removes the first column of all records.
std::string removeFirstColumn(char separator, const std::string& path);

/// What the names in an accepted header say of its first columns.
enum class FirstColumns : std::uint8_t {
    Usual,   ///< x, y, or nothing
    Other,   ///< another column before x, as in n;x;y;z
    YBeforeX ///< as in n e h
};
FirstColumns firstColumnsOf(std::string_view line, ElevationHeader header);

/// The command that exchanges the first two columns of the file at `path` and writes its header
/// anew.
std::string exchangeColumns(char separator, const std::string& path);

/// The first line of `text`, without its line end; `text` then begins behind it.
std::string_view takeLine(std::string_view& text);

} // namespace veldtrim
