/// Why a line is no record, in words.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// Why `line` is no record of a file with this header. For a line that is one, the answer has no
/// meaning.
std::string reasonNotParsed(std::string_view line, ElevationHeader header);

/// Whether x or y of a record seems to be written with a decimal comma, at which reading stops.
bool hasDecimalComma(std::string_view record, ElevationHeader header);

} // namespace veldtrim
