#include "run/record_batch.h"

#include "boundary/point_location.h"
#include "elevation/record.h"

#include <algorithm>
#include <span>

namespace veldtrim {

void RecordBatch::read(LineReader& input, std::size_t most, char format, char separator,
                       BoundaryModel& model) {
    most = std::min(most, capacity);
    input.next(lines_[0]);
    size_ = 1;
    while (size_ < most && input.nextAtHand(lines_[size_])) {
        ++size_;
    }

    std::array<ElevationPoint, capacity> points;
    std::array<std::size_t, capacity> lineOf{};
    std::size_t records = 0;
    for (std::size_t i = 0; i < size_; ++i) {
        keeps_[i] = false;
        lineOf[records] = i;
        records += parseRecord(lines_[i].text, format, separator, points[records]) ? 1 : 0;
    }
    std::array<PointLocation, capacity> locations{};
    model.locateEach(std::span(points).first(records), std::span(locations).first(records));
    for (std::size_t i = 0; i < records; ++i) {
        keeps_[lineOf[i]] = locations[i] != PointLocation::Outside;
    }
}

} // namespace veldtrim
