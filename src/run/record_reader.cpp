#include "run/record_reader.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string_view>

namespace veldtrim {

RecordReader::RecordReader(LineReader& lines, ElevationHeader header, BoundaryModel& model,
                           std::int32_t recordCount)
    : lines_(lines), header_(header), model_(model),
      unread_(static_cast<std::size_t>(std::max(recordCount, 0))) {}

void RecordReader::readAhead() {
    const std::size_t most = std::min(unread_, capacity);
    std::size_t size = 0;
    if (lines_.atHand().empty()) {
        Record& record = records_[size++];
        lines_.next(record.line);
        record.fault = readRecord(record.line.text, header_, record.point).fault;
    }
    std::string_view lines = lines_.atHand();
    while (size < most && !lines.empty()) {
        Record& record = records_[size++];
        record.fault = readFirstRecord(lines, header_, record.point, record.line);
        lines.remove_prefix(record.line.raw.size());
    }
    lines_.skip(lines_.atHand().size() - lines.size());
    unread_ -= size;
    size_ = size;
    next_ = 0;

    constexpr ElevationPoint nowhere{std::numeric_limits<double>::quiet_NaN(), 0.0};
    for (std::size_t i = 0; i < size; ++i) {
        points_[i] = records_[i].fault == RecordFault::None ? records_[i].point : nowhere;
    }
    model_.locateEach(std::span(points_).first(size), std::span(locations_).first(size));
    for (std::size_t i = 0; i < size; ++i) {
        records_[i].location = locations_[i];
    }
}

} // namespace veldtrim
