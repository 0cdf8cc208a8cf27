#include "run/record_reader.h"

#include <algorithm>
#include <span>

namespace veldtrim {

RecordReader::RecordReader(LineReader& lines, ElevationHeader header, BoundaryModel& model,
                           std::int32_t recordCount)
    : lines_(lines), header_(header), model_(model),
      unread_(static_cast<std::size_t>(std::max(recordCount, 0))) {}

void RecordReader::readAhead() {
    const std::size_t most = std::min(unread_, capacity);
    lines_.next(records_[0].line);
    size_ = 1;
    while (size_ < most && lines_.nextAtHand(records_[size_].line)) {
        ++size_;
    }
    unread_ -= size_;
    next_ = 0;

    std::array<ElevationPoint, capacity> points;
    std::array<Record*, capacity> recordOf{};
    std::size_t count = 0;
    for (Record& record : std::span(records_).first(size_)) {
        record.fault = readRecord(record.line.text, header_, record.point).fault;
        record.location = PointLocation::Outside;
        points[count] = record.point;
        recordOf[count] = &record;
        count += record.fault == RecordFault::None ? 1 : 0;
    }
    std::array<PointLocation, capacity> locations{};
    model_.locateEach(std::span(points).first(count), std::span(locations).first(count));
    for (std::size_t i = 0; i < count; ++i) {
        recordOf[i]->location = locations[i];
    }
}

} // namespace veldtrim
