/// The header line of an elevation point file, which determines the format and the separator.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// Index of the separator in a node header.
inline constexpr std::size_t nodeSeparatorIndex = 3;

/// Parses the first line of an elevation point file, without its line end. Returns whether it is an
/// accepted header.
///
/// Accepted are the xyz headers x s y s z, X s Y s Z, x s y s z s g and X s Y s Z s G, with any one
/// character s as the separator and nothing else on the line, and every line that begins with "n"
/// or "N" (node format).
///
/// - `separator`: the second character of a line that begins with "x" or "X", even if the line is
///   rejected; the character at `nodeSeparatorIndex` of a node header. If the line is too short for
///   it, a character that no record contains. Unchanged for any other line.
/// - `format`: 'x' for a line that begins with "x" or "X", 'n' or 'N' for a node header, else 'f'.
/// - `layout`: 1 for three columns, 2 for four, 0 for a node header or a rejected line.
/// - `errorText`: why the line is rejected; empty for an accepted or an empty line.
bool parseHeader(std::string_view line, char& separator, char& format, std::int32_t& layout,
                 std::string& errorText);

/// The results of parseHeader for an accepted header line.
struct ElevationHeader {
    char format = 'f';
    char separator = '\0';
    std::int32_t layout = 0;

    /// Whether the header line names a separator; if not, no line after it is a record.
    [[nodiscard]] bool hasSeparator() const;

    /// The number of columns that the header line names; 0 for a node header, which names none.
    [[nodiscard]] std::int32_t columns() const { return layout == 0 ? 0 : layout + 2; }
};

/// parseHeader with its results in one structure. `header` is meaningless for a rejected line.
bool readHeader(std::string_view line, ElevationHeader& header, std::string& errorText);

} // namespace veldtrim
