/// Advice on header lines.
#pragma once

#include "elevation/header.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// Returns a sentence about a file whose first line is not an accepted header, with a command that
/// repairs it. `start` is the beginning of the text file at `path`.
std::string adviceOnHeader(std::string_view start, const std::string& path);

/// Returns the command that replaces the header line of the file at `path` by x, y, z, or by x, y,
/// z, g, with this separator.
std::string replaceHeader(char separator, bool hasG, const std::string& path);

/// Returns the command that replaces the header line by x, y, z and removes the first column of all
/// records.
std::string removeFirstColumn(char separator, const std::string& path);

/// The first columns, according to the names in an accepted header.
enum class FirstColumns : std::uint8_t {
    Usual,   ///< x, y, or nothing
    Other,   ///< another column before x, as in n;x;y;z
    YBeforeX ///< as in n e h
};
FirstColumns firstColumnsOf(std::string_view line, ElevationHeader header);

/// Returns the command that exchanges the first two columns of the file at `path` and replaces its
/// header by x, y, z.
std::string exchangeColumns(char separator, const std::string& path);

/// Removes the first line from `text` and returns it without its line end.
std::string_view takeLine(std::string_view& text);

} // namespace veldtrim
