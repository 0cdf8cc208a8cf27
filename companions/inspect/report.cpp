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

bool hasWrongPoints(const Report& report) {
    return std::any_of(report.files.begin(), report.files.end(), [](const FileReport& file) {
        return file.countsInFirstColumn || file.firstColumns != FirstColumns::Usual ||
               !file.decimalComma.empty();
    });
}

bool hasProblem(const FileReport& file) {
    return !file.taken || file.failed || file.counts.unparsed > 0 || !file.advice.empty();
}

bool isListed(const PolygonReport& polygon, const Report& report, bool all) {
    constexpr std::size_t fewPolygons = 20;
    return all || report.polygons.size() <= fewPolygons || !polygon.remarks.empty();
}

std::map<std::string, std::size_t> countByOutcome(const Report& report) {
    std::map<std::string, std::size_t> counts;
    for (const FileReport& file : report.files) {
        const bool isRead = file.taken && !file.failed;
        ++counts[!isRead ? file.reason : hasProblem(file) ? "read, with remarks" : "read"];
    }
    return counts;
}

} // namespace veldtrim
