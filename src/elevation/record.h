/// Reads the records of elevation point files, one line each, as points.
#pragma once

#include "elevation/header.h"
#include "geometry/elevation_point.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veldtrim {

/// Why a line is not a record.
enum class RecordFault : std::uint8_t {
    None,
    NoIdentifier, ///< the format requires an integer first
    NoSeparatorAfterIdentifier,
    NoX, ///< no number, or one that a double cannot hold
    NothingAfterX,
    NoSeparatorAfterX, ///< none within reach; a later one does not count
    NoY,
    NothingAfterY
};

/// The result of reading a line.
struct RecordReading {
    RecordFault fault = RecordFault::None;

    /// The offset in the line at which reading failed: that of the field that is not a number,
    /// including white space before it, or that after a number where the separator or anything else
    /// is missing. For a record, the offset behind y.
    std::size_t place = 0;
};

/// Reads x and y of a record into `point`. `line` is the record without its line end, `header` the
/// header of its file.
///
/// Numbers have the form that readNumber accepts. At most 99 other characters may stand between x
/// and the separator; if the separator is a space, it is not required. At least one character must
/// follow x, and at least one must follow y. The rest of the line is ignored.
///
/// The format 'y', which parseHeader never returns, denotes records that begin with an integer
/// column. That column and its separator are skipped.
///
/// `point` is unspecified if the line is not a record. Throws only std::bad_alloc, and only for an
/// unusual field, such as a number that does not fit.
RecordReading readRecord(std::string_view line, ElevationHeader header, ElevationPoint& point);

/// readRecord with the results of parseHeader as arguments. Returns whether the line is a record.
bool parseRecord(std::string_view line, char format, char separator, ElevationPoint& point);

} // namespace veldtrim
