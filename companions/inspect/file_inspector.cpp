#include "inspect/file_inspector.h"

#include "elevation/record_count.h"
#include "inspect/record_reason.h"
#include "platform/file.h"
#include "run/input_files.h"
#include "text/line_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <system_error>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

constexpr std::size_t mostUnparsedLines = 5;

/// Lines up to this number are searched for decimal commas: a file has them everywhere or nowhere.
constexpr std::int64_t recordsForCommas = 1000;

void countLineEnd(const Line& line, FileReport& report) {
    const std::size_t size = line.raw.size() - line.text.size();
    report.lineFeeds += size == 1 ? 1 : 0;
    report.carriageReturnLineFeeds += size == 2 ? 1 : 0;
}

/// Returns why a run would skip the file, and the system's reason if it cannot be opened. The
/// result is empty if the run would take the file.
std::string reasonToLeaveOut(const std::string& path) {
    if (!hasInputExtension(path)) {
        return "its name does not end in " + listInputExtensions();
    }
    std::string reason = reasonToSkip(path);
    if (!reason.empty()) {
        errno = 0;
        const PlatformFile file = PlatformFile::openForReading(path);
        if (!file.isOpen()) {
            reason = "it cannot be read: " + std::generic_category().message(errno);
        }
    }
    return reason;
}

} // namespace

FileReport FileInspector::inspect(const std::string& path) {
    FileReport report;
    report.name = boost::filesystem::path(path).filename().string();
    try {
        report.reason = reasonToLeaveOut(path);
        if (report.reason.empty()) {
            report.taken = true;
            readFile(path, report);
        }
    } catch (const std::exception& error) {
        report.failed = true;
        report.reason = error.what();
    }
    return report;
}

void FileInspector::readFile(const std::string& path, FileReport& report) {
    const std::int32_t recordCount = countRecords(path);
    LineReader input(path);
    Line line;
    input.next(line);
    countLineEnd(line, report);
    std::string errorText;
    if (!readHeader(line.text, report.header, errorText)) {
        return; // the file has changed since reasonToLeaveOut read it
    }
    RecordReader records(input, report.header, model_, recordCount);
    for (std::int32_t i = 0; i < recordCount; ++i) {
        inspectRecord(records.next(), std::int64_t{i} + 2, report);
    }
    report.counts.records = std::max(recordCount, 0);
    report.lastLineUnread = recordCount >= 0 && input.next(line);
}

void FileInspector::inspectRecord(const Record& record, std::int64_t number, FileReport& report) {
    const std::string_view line = record.line.text;
    countLineEnd(record.line, report);
    if (record.fault == RecordFault::None) {
        inspectPoint(record, report);
    } else {
        ++report.counts.unparsed;
        if (report.firstUnparsed.size() < mostUnparsedLines) {
            report.firstUnparsed.push_back({number, reasonNotParsed(line, report.header)});
        }
    }
    if (number <= recordsForCommas && hasDecimalComma(line, report.header)) {
        ++report.decimalCommas;
    }
}

void FileInspector::inspectPoint(const Record& record, FileReport& report) {
    const ElevationPoint& point = record.point;
    report.bounds.add(point.x, point.y);
    if (!record.isKept()) {
        ++report.counts.outside;
    } else if (findPolygons(point)) {
        ++report.counts.inside;
    } else {
        ++report.counts.onBoundary;
    }
    if (density_ != nullptr) {
        density_->add(point.x, point.y, record.isKept() ? Density::Kept : Density::Dropped);
    }
}

/// Counts the point for each polygon that contains it. Returns whether it is inside any of them
/// rather than only on edges.
bool FileInspector::findPolygons(const ElevationPoint& point) {
    bool isInside = false;
    for (const std::uint32_t polygon : finder_.candidates(point)) {
        const PointLocation location = finder_.locate(polygon, point);
        polygons_[polygon].held += location != PointLocation::Outside ? 1 : 0;
        isInside = isInside || location == PointLocation::Inside;
    }
    return isInside;
}

} // namespace veldtrim
