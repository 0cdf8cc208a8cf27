/// Why a line is no record, in words.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// Why `line` is no record of a file with this header. For a line that is one, the answer has no
/// meaning.
std::string reasonNotParsed(std::string_view line, ElevationHeader header);

/// The first of x and y of a record that seems to be written with a decimal comma, at which reading
/// stops; the whole record if commas also separate its fields; empty if there is none.
std::string_view findDecimalComma(std::string_view record, ElevationHeader header);

} // namespace veldtrim
