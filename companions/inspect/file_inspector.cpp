#include "inspect/file_inspector.h"

#include "elevation/header.h"
#include "elevation/record.h"
#include "elevation/record_count.h"
#include "inspect/record_reason.h"
#include "run/input_files.h"
#include "text/line_reader.h"

#include <cerrno>
#include <cstddef>
#include <exception>
#include <system_error>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

constexpr std::size_t mostUnparsedLines = 5;

/// Records that are looked at for decimal commas: whoever writes them writes them everywhere.
constexpr std::int64_t recordsForCommas = 1000;

std::int32_t columnsOf(std::int32_t layout) {
    return layout == 0 ? 0 : layout + 2;
}

void countLineEnd(const Line& line, FileReport& report) {
    const std::size_t size = line.raw.size() - line.text.size();
    report.lineFeeds += size == 1 ? 1 : 0;
    report.carriageReturnLineFeeds += size == 2 ? 1 : 0;
}

/// The reason of the run, and that of the system where the file cannot be opened.
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
    std::int32_t layout = 0;
    std::string errorText;
    if (!parseHeader(line.text, report.separator, report.format, layout, errorText)) {
        return; // it changed since it was looked at
    }
    report.columns = columnsOf(layout);
    for (std::int32_t i = 0; i < recordCount; ++i) {
        input.next(line);
        countLineEnd(line, report);
        inspectRecord(line.text, std::int64_t{i} + 2, report);
    }
    report.counts.records = recordCount > 0 ? recordCount : 0;
    report.lastLineUnread = recordCount >= 0 && input.next(line);
}

void FileInspector::inspectRecord(std::string_view line, std::int64_t number, FileReport& report) {
    ElevationPoint point;
    if (!parseRecord(line, report.format, report.separator, point)) {
        ++report.counts.unparsed;
        if (report.firstUnparsed.size() < mostUnparsedLines) {
            report.firstUnparsed.push_back(
                {number, reasonNotParsed(line, report.format, report.separator)});
        }
    } else {
        inspectPoint(point, report);
    }
    if (number <= recordsForCommas && hasDecimalComma(line, report.separator, report.columns)) {
        ++report.decimalCommas;
    }
}

void FileInspector::inspectPoint(const ElevationPoint& point, FileReport& report) {
    report.bounds.add(point.x, point.y);
    PointLocation location = PointLocation::Outside;
    for (const std::uint32_t polygon : finder_.candidates(point)) {
        const PointLocation one = finder_.locate(polygon, point);
        if (one != PointLocation::Outside) {
            ++polygons_[polygon].held;
            location = location == PointLocation::Inside ? location : one;
        }
    }
    switch (location) {
    case PointLocation::Inside:
        ++report.counts.inside;
        break;
    case PointLocation::OnBoundary:
        ++report.counts.onBoundary;
        break;
    case PointLocation::Outside:
        ++report.counts.outside;
        break;
    }
    if (density_ != nullptr) {
        density_->add(point.x, point.y,
                      location == PointLocation::Outside ? Density::Dropped : Density::Kept);
    }
}

} // namespace veldtrim
