/// Explains why a line is not a record.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// Returns why `line` is not a record of a file with this header. The result is meaningless if it
/// is one.
std::string reasonNotParsed(std::string_view line, ElevationHeader header);

/// Whether x or y of a record seems to have a decimal comma, at which reading would stop.
bool hasDecimalComma(std::string_view record, ElevationHeader header);

} // namespace veldtrim
