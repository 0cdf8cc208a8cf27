/// The header line of an elevation point file: which format it has, what separates its fields.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// Decides from its first line whether an elevation point file is usable.
///
/// Accepted are the xyz headers x s y s z, X s Y s Z, x s y s z s g and X s Y s Z s G, with any one
/// character s as separator and nothing else on the line, and every line that begins with "n" or
/// "N" (node format). `line` is the header without its line end.
///
/// - `separator`: the second character of an xyz header, the fourth of a node header; a character
///   that no record holds for a node header without a fourth character. Set also when an xyz header
///   is rejected for its further characters (then that character if it has no second one);
///   unchanged when the line is empty or its first character is none of n, N, x, X.
/// - `format`: 'x' for a line that begins with "x" or "X", 'n' or 'N' for a node header, else 'f'.
/// - `layout`: 1 for three columns, 2 for four, 0 for a node header and for a rejected line.
/// - `errorText`: why the line is rejected; empty for an accepted and for an empty line.
///
/// Returns whether the header is accepted.
bool parseHeader(std::string_view line, char& separator, char& format, std::int32_t& layout,
                 std::string& errorText);

/// What an accepted header line says of the records after it, as parseHeader finds it.
struct ElevationHeader {
    char format = 'f';
    char separator = '\0';
    std::int32_t layout = 0;

    /// Whether the header line names a separator; if not, no line after it is a record.
    [[nodiscard]] bool hasSeparator() const;

    /// Number of columns that the header line names; 0 for a node header, which names none.
    [[nodiscard]] std::int32_t columns() const { return layout == 0 ? 0 : layout + 2; }
};

/// parseHeader with one result for three. `header` is of no meaning for a rejected line.
bool readHeader(std::string_view line, ElevationHeader& header, std::string& errorText);

} // namespace veldtrim
