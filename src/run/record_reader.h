/// The records of an elevation file, one after the other, each with its place in the boundaries.
#pragma once

#include "boundary/model/boundary_model.h"
#include "boundary/point_location.h"
#include "elevation/header.h"
#include "elevation/record.h"
#include "geometry/elevation_point.h"
#include "text/line_reader.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace veldtrim {

/// A line after the header, and what reading it has come to.
struct Record {
    Line line;
    ElevationPoint point; ///< of no meaning for a line at fault
    RecordFault fault = RecordFault::None;

    /// Where the point lies with respect to the model boundaries; `Outside` for a line at fault.
    PointLocation location = PointLocation::Outside;

    [[nodiscard]] bool isKept() const { return location != PointLocation::Outside; }
};

/// Reads the records of a file. Their points are looked up together, which is faster.
///
/// Lines are read ahead only as far as they are in memory already: the caller has dealt with all
/// lines before when the file is waited for, or fails.
class RecordReader {
public:
    /// The most lines that are read ahead: what the point test can look at side by side.
    static constexpr std::size_t capacity = PointIndex::batchSize;

    /// Reads `recordCount` records from `lines`, whose header line, `header`, has been read.
    RecordReader(LineReader& lines, ElevationHeader header, BoundaryModel& model,
                 std::int32_t recordCount);

    /// The next record; after the last line of the file that of an empty line. Must not be called
    /// more than `recordCount` times. Valid until the next call.
    ///
    /// Throws std::system_error when the system fails to read, before any line is read ahead, and
    /// std::bad_alloc for lack of memory; the reader is then of no further use.
    const Record& next() {
        if (next_ == size_) {
            readAhead();
        }
        return records_[next_++];
    }

private:
    /// Replaces the records by those that follow, one at least.
    void readAhead();

    LineReader& lines_;
    ElevationHeader header_;
    BoundaryModel& model_;
    std::size_t unread_; ///< records of the file that have not been read
    std::array<Record, capacity> records_;
    std::size_t size_ = 0;
    std::size_t next_ = 0;
};

} // namespace veldtrim
