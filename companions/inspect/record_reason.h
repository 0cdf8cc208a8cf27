/// Explains why a line is not a record.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// Returns why `line` is not a record of a file with this header. The result is meaningless if it
/// is one.
std::string reasonNotParsed(std::string_view line, ElevationHeader header);

/// Returns the first of x and y of a record that seems to have a decimal comma, at which reading
/// stops. Returns the whole record if commas also separate its fields, and nothing if there is no
/// decimal comma.
std::string_view findDecimalComma(std::string_view record, ElevationHeader header);

} // namespace veldtrim
