/// Records read ahead, so that their points are tested together.
#pragma once

#include "boundary/model/boundary_model.h"
#include "text/line_reader.h"

#include <array>
#include <cstddef>

namespace veldtrim {

/// The next lines of an elevation file, and which of them are to be kept.
///
/// Lines are read ahead only as far as they are in memory already: what has been read is written
/// before the file is waited for, or fails.
class RecordBatch {
public:
    /// The most lines that a batch holds: what the point test can look at side by side.
    static constexpr std::size_t capacity = PointIndex::groupSize;

    /// Reads the next `most` lines, or fewer, but one at least; after the last line of the file
    /// that is an empty one. Keeps those that are records, as parseRecord reads them, with a point
    /// within the boundaries of `model`.
    ///
    /// The lines are valid until `input` is read again. Throws std::system_error when the system
    /// fails to read, before any line is read ahead, and std::bad_alloc for lack of memory; the
    /// batch is then of no meaning.
    void read(LineReader& input, std::size_t most, char format, char separator,
              BoundaryModel& model);

    /// Number of lines; none at first.
    [[nodiscard]] std::size_t size() const { return size_; }

    [[nodiscard]] const Line& line(std::size_t i) const { return lines_[i]; }

    [[nodiscard]] bool keeps(std::size_t i) const { return keeps_[i]; }

private:
    std::size_t size_ = 0;
    std::array<Line, capacity> lines_;
    std::array<bool, capacity> keeps_{};
};

} // namespace veldtrim
