#include "inspect/report_text.h"

#include "explain/wording.h"
#include "inspect/hints.h"

namespace veldtrim {

namespace {

std::string boxText(const BoundingBox& box) {
    return "x " + coordinate(box.xMin) + " to " + coordinate(box.xMax) + ", y " +
           coordinate(box.yMin) + " to " + coordinate(box.yMax);
}

std::string lineEnds(const FileReport& file) {
    if (file.lineFeeds > 0 && file.carriageReturnLineFeeds > 0) {
        return "LF and CR LF mixed";
    }
    return file.carriageReturnLineFeeds > 0 ? "CR LF" : "LF";
}

std::string countsText(const RecordCounts& counts) {
    return "kept " + grouped(counts.kept()) + " (" + grouped(counts.inside) + " inside, " +
           grouped(counts.onBoundary) + " on an edge), outside " + grouped(counts.outside) +
           ", not read " + grouped(counts.unparsed);
}

void appendFile(const FileReport& file, std::string& text) {
    text += "  " + printable(file.name) + '\n';
    const std::string indent = "      ";
    if (!file.taken || file.failed) {
        text += indent + (file.failed ? "FAILS: " : "left out: ") + printable(file.reason) + '\n';
        return;
    }
    text += indent + (file.header.format == 'x' ? "xyz" : "node");
    if (file.header.columns() > 0) {
        text += ", " + std::to_string(file.header.columns()) + " columns";
    }
    text += ", separator " +
            (file.header.hasSeparator() ? describeSeparator(file.header.separator) : "none") +
            ", lines end in " + lineEnds(file) + '\n';
    text += indent + grouped(file.counts.records) + " records: " + countsText(file.counts) + '\n';
    if (!file.bounds.isEmpty()) {
        text += indent + boxText(file.bounds) + '\n';
    }
    for (const UnparsedLine& line : file.firstUnparsed) {
        text += indent + "line " + grouped(line.number) + ": " + line.reason + '\n';
    }
    if (file.counts.unparsed > static_cast<std::int64_t>(file.firstUnparsed.size())) {
        text +=
            indent + "... and " +
            grouped(file.counts.unparsed - static_cast<std::int64_t>(file.firstUnparsed.size())) +
            " more that are not read\n";
    }
}

void appendAdvice(const FileReport& file, std::string& text) {
    for (const std::string& sentence : file.advice) {
        text += "      " + printable(sentence) + '\n';
    }
}

void appendFiles(const Report& report, bool all, std::string& text) {
    text += "\nFiles\n";
    for (const auto& [outcome, count] : countByOutcome(report)) {
        text += "  " + grouped(static_cast<std::int64_t>(count)) + ' ' + printable(outcome) + '\n';
    }
    for (const FileReport& file : report.files) {
        if (all || hasProblem(file)) {
            appendFile(file, text);
            appendAdvice(file, text);
        }
    }
}

void appendPolygon(const PolygonReport& polygon, std::string& text) {
    text += "  polygon " + std::to_string(polygon.id) + ": " +
            grouped(static_cast<std::int64_t>(polygon.vertices)) + " vertices, area " +
            measure(polygon.area) + ", holds " + grouped(polygon.held) + " records\n";
    if (polygon.vertices > 0) {
        text += "      " + boxText(polygon.bounds) + '\n';
    }
    for (const std::string& remark : polygon.remarks) {
        text += "      " + remark + '\n';
    }
}

void appendPolygons(const Report& report, bool all, std::string& text) {
    text += "\nPolygons\n";
    std::int64_t sound = 0;
    for (const PolygonReport& polygon : report.polygons) {
        if (isListed(polygon, report, all)) {
            appendPolygon(polygon, text);
        } else {
            ++sound;
        }
    }
    if (sound > 0) {
        text += "  " + grouped(sound) + " without remarks\n";
    }
}

} // namespace

std::string textOf(const Report& report, bool all) {
    std::string text = "Input directory  " + printable(report.inputDirectory) + '\n' +
                       "Boundary file    " + printable(report.boundaryFile) + '\n';
    if (!report.polygons.empty()) {
        appendPolygons(report, all, text);
    }
    if (!report.files.empty()) {
        appendFiles(report, all, text);
    }
    text += "\nTotal\n  " + grouped(report.total.records) + " records in " +
            grouped(static_cast<std::int64_t>(takenFiles(report))) + " of " +
            grouped(static_cast<std::int64_t>(report.files.size())) +
            " files: " + countsText(report.total) + '\n';
    if (keepsLittle(report) && !report.modelBounds.isEmpty()) {
        text += "  bounds of the points      " + boxText(report.pointBounds) + '\n';
        text += "  bounds of the boundaries  " + boxText(report.modelBounds) + '\n';
    }
    for (const std::string& hint : report.hints) {
        text += "  Look at this: " + printable(hint) + '\n';
    }
    if (!report.failure.empty()) {
        text += "  A run would fail: " + printable(report.failure) + '\n';
    } else if (!report.wouldKeep()) {
        text += "  A run would finish and keep nothing.\n";
    }
    return text;
}

} // namespace veldtrim
