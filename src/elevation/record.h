/// One record of an elevation point file: its line, read as a point.
#pragma once

#include "geometry/elevation_point.h"

#include <string_view>

namespace veldtrim {

/// Reads x and y from the record `line` (without its line end) to `point`.
///
/// Numbers are what formatted stream extraction in the classic locale takes: leading white space,
/// an optional sign, digits with an optional point, an optional exponent. After x come at most 99
/// other characters, then `separator`; with a blank as separator nothing is required there. At
/// least one character must follow x, and at least one must follow y. The rest of the line is not
/// looked at.
///
/// `format` is what parseHeader found. The value 'y', which it never finds, stands for records that
/// begin with an integer column: that column and its separator are skipped first.
///
/// Returns false when the line is no such record; `point` is then of no meaning. Never throws but
/// for lack of memory, and only where a field is unusual (a number that does not fit, say).
bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point);

} // namespace veldtrim
