/// One record of an elevation point file: its line, read as a point.
#pragma once

#include "elevation/header.h"
#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veldtrim {

/// Why a line is no record.
enum class RecordFault : std::uint8_t {
    None,
    NoIdentifier, ///< no integer where the records begin with one
    NoSeparatorAfterIdentifier,
    NoX, ///< no number, or one that a double cannot hold
    NothingAfterX,
    NoSeparatorAfterX, ///< none within reach; a later one does not count
    NoY,
    NothingAfterY
};

/// What reading a line has come to.
struct RecordReading {
    RecordFault fault = RecordFault::None;

    /// Where reading stopped to make sense: the offset in the line of the field that is no number,
    /// as far as the field before it left the line unread, or of what should be a separator or
    /// follow a number. The offset behind y for a record.
    std::size_t place = 0;
};

/// Reads x and y from the record `line` (without its line end) of a file with this header to
/// `point`.
///
/// Numbers are what readNumber takes. After x come at most 99 other characters, then the separator;
/// with a blank as separator nothing is required there. At least one character must follow x, and
/// at least one must follow y. The rest of the line is not looked at.
///
/// The format 'y', which parseHeader never finds, stands for records that begin with an integer
/// column: that column and its separator are skipped first.
///
/// `point` is of no meaning when the line is at fault. Throws std::bad_alloc only, and only where a
/// field is unusual (a number that does not fit, say).
RecordReading readRecord(std::string_view line, ElevationHeader header, ElevationPoint& point);

/// readRecord with the results of parseHeader one by one. Returns whether the line is a record.
bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point);

} // namespace veldtrim
