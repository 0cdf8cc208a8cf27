#include "inspect/report.h"

#include <algorithm>

namespace veldtrim {

void RecordCounts::add(const RecordCounts& other) {
    records += other.records;
    unparsed += other.unparsed;
    inside += other.inside;
    onBoundary += other.onBoundary;
    outside += other.outside;
}

std::size_t takenFiles(const Report& report) {
    return static_cast<std::size_t>(std::count_if(report.files.begin(), report.files.end(),
                                                  [](const auto& file) { return file.taken; }));
}

} // namespace veldtrim
