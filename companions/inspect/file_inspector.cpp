#include "inspect/file_inspector.h"

#include "elevation/record_count.h"
#include "inspect/advice/header_advice.h"
#include "inspect/record_reason.h"
#include "run/input_files.h"
#include "text/line_reader.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

constexpr std::size_t mostUnparsedLines = 5;

/// Only about this many records are searched for decimal commas and for a count in the first
/// column, because a file has them everywhere or nowhere.
constexpr std::int64_t recordsToSample = 1000;

void countLineEnd(const Line& line, FileReport& report) {
    const std::size_t size = line.raw.size() - line.text.size();
    report.lineFeeds += size == 1 ? 1 : 0;
    report.carriageReturnLineFeeds += size == 2 ? 1 : 0;
}

/// Returns the number of records that have been read so far.
std::int64_t readable(const FileReport& report) {
    return report.counts.kept() + report.counts.outside;
}

std::string reasonToLeaveOut(const std::string& path) {
    return hasInputExtension(path) ? reasonToSkip(path)
                                   : "its name does not end in " + listInputExtensions();
}

} // namespace

FileReport FileInspector::look(const std::string& path) {
    FileReport report;
    report.name = boost::filesystem::path(path).filename().string();
    try {
        report.reason = reasonToLeaveOut(path);
        if (report.reason.empty()) {
            report.taken = true;
            report.recordCount = countRecords(path);
        }
    } catch (const std::exception& error) {
        report.failed = true;
        report.reason = error.what();
    }
    return report;
}

void FileInspector::read(const std::string& path, FileReport& report, ProgressMessage& progress) {
    try {
        readRecords(path, report, progress);
    } catch (const std::exception& error) {
        report.failed = true;
        report.reason = error.what();
    }
}

void FileInspector::readRecords(const std::string& path, FileReport& report,
                                ProgressMessage& progress) {
    LineReader input(path);
    Line line;
    input.next(line);
    countLineEnd(line, report);
    std::string errorText;
    if (!readHeader(line.text, report.header, errorText)) {
        return; // the file has changed since `look` read it
    }
    report.firstColumns = firstColumnsOf(line.text, report.header);
    RecordReader records(input, report.header, model_, report.recordCount);
    for (std::int32_t i = 0; i < report.recordCount; ++i) {
        progress.OnProgress(i, false);
        inspectRecord(records.next(), std::int64_t{i} + 2, report);
    }
    report.counts.records = std::max(report.recordCount, 0);
    report.lastLineUnread = report.recordCount >= 0 && input.next(line);
    constexpr std::int64_t fewRecords = 3;
    report.countsInFirstColumn = countedRecords_ >= fewRecords &&
                                 countedRecords_ >= std::min(recordsToSample, readable(report));
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
    if (number <= recordsToSample && report.decimalComma.empty()) {
        report.decimalComma = findDecimalComma(line, report.header);
    }
}

void FileInspector::inspectPoint(const Record& record, FileReport& report) {
    const ElevationPoint& point = record.point;
    const std::int64_t position = readable(report);
    if (position == 0) {
        countedRecords_ = 0;
        firstX_ = point.x;
    }
    if (countedRecords_ == position && position < recordsToSample &&
        (firstX_ == 0.0 || firstX_ == 1.0) && point.x == firstX_ + static_cast<double>(position)) {
        ++countedRecords_;
    }
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
