/// Reads the records of an elevation file and locates their points in the model boundaries.
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

/// A line after the header, and the result of reading it.
struct Record {
    Line line;
    ElevationPoint point; ///< unspecified if the line is not a record
    RecordFault fault = RecordFault::None;

    /// Where the point lies with respect to the model boundaries; `Outside` if the line is not a
    /// record.
    PointLocation location = PointLocation::Outside;

    [[nodiscard]] bool isKept() const { return location != PointLocation::Outside; }
};

/// Reads the records of a file. Locates the points of many records together, which is faster.
///
/// Reads ahead only lines that are already in memory. So when a read blocks or fails, the caller
/// has already handled all lines before.
class RecordReader {
public:
    /// The largest number of lines read ahead: the batch size of the point index.
    static constexpr std::size_t capacity = PointIndex::batchSize;

    /// Prepares to read `recordCount` records from `lines`, after its header line has been read.
    RecordReader(LineReader& lines, ElevationHeader header, BoundaryModel& model,
                 std::int32_t recordCount);

    /// Returns the next record, or that of an empty line if the file has no more lines. It is valid
    /// until the next call. Must not be called more than `recordCount` times.
    ///
    /// Throws std::system_error if reading fails, which cannot lose lines that were read ahead, and
    /// std::bad_alloc if memory runs out. The reader must not be used after either.
    const Record& next() {
        if (next_ == size_) {
            readAhead();
        }
        return records_[next_++];
    }

private:
    /// Replaces the records by the next ones, of which there is at least one.
    void readAhead();

    LineReader& lines_;
    ElevationHeader header_;
    BoundaryModel& model_;
    std::size_t unread_; ///< records of the file that have not been read
    std::array<Record, capacity> records_;
    std::array<ElevationPoint, capacity> points_;
    std::array<PointLocation, capacity> locations_{};
    std::size_t size_ = 0;
    std::size_t next_ = 0;
};

} // namespace veldtrim
