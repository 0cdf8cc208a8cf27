/// Reads the records of elevation point files, one line each, as points.
#pragma once

#include "elevation/header.h"
#include "geometry/elevation_point.h"
#include "text/line_reader.h"
#include "text/number.h"

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

/// readRecord for the first of some whole lines, which becomes `line`. This is faster, because the
/// end of the line is not looked for among the characters of x and y. `lines` must end with a line
/// feed.
RecordFault readFirstRecord(std::string_view lines, ElevationHeader header, ElevationPoint& point,
                            Line& line);

namespace detail {

inline const char* skipSpaces(const char* at) noexcept {
    while (*at == ' ') {
        ++at;
    }
    return at;
}

/// readRecord for the line at `at`, which a line feed ends somewhere before `end`, if it is of the
/// usual form. Returns the place behind y, or null, which says nothing about the line. No step
/// passes the line feed, because it is neither part of a number nor skipped.
inline const char* readUsualRecord(const char* at, const char* end, char separator,
                                   ElevationPoint& point) {
    at = readUsualNumber(skipSpaces(at), end, point.x);
    if (at == nullptr || *at == '\n' || (*at != separator && separator != ' ')) {
        return nullptr;
    }
    at = readUsualNumber(skipSpaces(*at == separator ? at + 1 : at), end, point.y);
    const bool isLast = at == nullptr || *at == '\n' || (*at == '\r' && at[1] == '\n');
    return isLast ? nullptr : at;
}

} // namespace detail

inline RecordFault readFirstRecord(std::string_view lines, ElevationHeader header,
                                   ElevationPoint& point, Line& line) {
    const char* const begin = lines.data();
    const char* const end = begin + lines.size();
    const char* const at = header.format == 'y'
                               ? nullptr
                               : detail::readUsualRecord(begin, end, header.separator, point);
    line = lineUpTo(begin, findLineFeed(at == nullptr ? begin : at, end));
    return at == nullptr ? readRecord(line.text, header, point).fault : RecordFault::None;
}

} // namespace veldtrim
