#include "inspect/inspect_workspace.h"

#include "boundary/file/boundary_reader.h"
#include "inspect/file_inspector.h"
#include "inspect/hints.h"
#include "inspect/polygon_finder.h"
#include "inspect/ring_check.h"
#include "run/input_files.h"

#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <sstream>
#include <string_view>
#include <system_error>
#include <vector>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Keeps the reader's trace off standard output.
class QuietConsole {
public:
    QuietConsole() : before_(std::cout.rdbuf(trace_.rdbuf())) {}
    ~QuietConsole() { std::cout.rdbuf(before_); }
    QuietConsole(const QuietConsole&) = delete;
    QuietConsole& operator=(const QuietConsole&) = delete;

    [[nodiscard]] std::string trace() const { return trace_.str(); }

private:
    std::ostringstream trace_;
    std::streambuf* before_;
};

/// The ids of the polygons in the reader's trace, which alone tells them: the model knows none.
std::vector<int> polygonIds(const std::string& trace) {
    constexpr std::string_view before = "\ncurrent polygon id = ";
    std::vector<int> ids;
    for (std::size_t at = trace.find(before); at != std::string::npos;
         at = trace.find(before, at + 1)) {
        const char* const number = trace.data() + at + before.size();
        int id = 0;
        if (std::from_chars(number, trace.data() + trace.size(), id).ec == std::errc()) {
            ids.push_back(id);
        }
    }
    return ids;
}

bool readBoundaries(const std::string& path, BoundaryModel& model, std::vector<int>& ids) {
    const QuietConsole quiet;
    const bool isRead = readin_b_XML(path, model);
    ids = polygonIds(quiet.trace());
    return isRead;
}

/// Why the boundary file was not read.
std::string boundaryFailure(const std::string& path) {
    const std::string start = "the boundary file " + path + " ";
    boost::system::error_code error;
    if (!fs::exists(path, error)) {
        return start + "does not exist";
    }
    if (!fs::is_regular_file(path, error)) {
        return start + "is not a regular file";
    }
    CMarkupSTL document;
    if (!XMLReader::setFile(path, &document)) {
        const std::string& reason = document.getParseError();
        return start + "cannot be read" + (reason.empty() ? "" : ": " + reason);
    }
    document.resetPosition();
    if (!XMLReader::traversePath("TavelDGM", &document)) {
        return start + "has no element TavelDGM below its root element";
    }
    return start + "has a polygon without a readable id, or a point without readable x, y and "
                   "segmenttype";
}

/// As the run splits the path of its input directory.
std::string directoryFailure(const fs::path& path) {
    const fs::path workspace = path.parent_path();
    if (!fs::is_directory(workspace)) {
        return "the workspace \"" + workspace.string() +
               "\" does not exist; for a directory right here write ./" + path.string();
    }
    if (!fs::is_directory(workspace / path.filename())) {
        return "the input directory " + path.string() + " does not exist";
    }
    return {};
}

void describePolygons(Inspection& inspection, const std::vector<int>& ids) {
    Report& report = inspection.report;
    const auto& vertices = inspection.model.vertices();
    for (const BoundaryPolygon& polygon : inspection.model.polygons()) {
        PolygonReport one;
        one.id = ids.at(report.polygons.size());
        one.vertices = polygon.vertexIndices.size();
        one.bounds = polygon.bounds;
        one.area = areaOf(polygon, vertices);
        one.remarks = remarksOn(polygon, vertices);
        report.polygons.push_back(std::move(one));
        if (!polygon.vertexIndices.empty()) {
            report.modelBounds.add(polygon.bounds);
        }
    }
}

void remarkOnPolygonsApart(Report& report) {
    for (PolygonReport& polygon : report.polygons) {
        const auto& box = polygon.bounds;
        const bool overlaps =
            std::any_of(report.files.begin(), report.files.end(), [&](const FileReport& file) {
                const auto& other = file.bounds;
                return !file.bounds.isEmpty() && box.xMin <= other.xMax && other.xMin <= box.xMax &&
                       box.yMin <= other.yMax && other.yMin <= box.yMax;
            });
        if (!overlaps && polygon.vertices > 0) {
            polygon.remarks.emplace_back("it overlaps the bounds of no file");
        }
    }
}

void inspectFiles(const fs::path& directory, bool withDensity, Inspection& inspection) {
    Report& report = inspection.report;
    if (withDensity) {
        inspection.density = std::make_unique<Density>();
    }
    PolygonFinder finder(inspection.model);
    FileInspector inspector(finder, report.polygons, inspection.density.get());
    std::vector<std::string> paths;
    visitFiles(directory.string(), [&](const std::string& path) { paths.push_back(path); });
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) {
        FileReport file = inspector.inspect(path);
        report.total.add(file.counts);
        if (!file.bounds.isEmpty()) {
            report.pointBounds.add(file.bounds);
        }
        if (file.failed && report.failure.empty()) {
            report.failure = "a run would stop at " + file.name + ": " + file.reason;
        }
        report.files.push_back(std::move(file));
    }
}

} // namespace

Inspection inspectWorkspace(const std::string& inputDirectory, const std::string& boundaryFile,
                            bool withDensity) {
    Inspection inspection;
    Report& report = inspection.report;
    report.inputDirectory = inputDirectory;
    report.boundaryFile = boundaryFile;
    std::vector<int> ids;
    if (!readBoundaries(boundaryFile, inspection.model, ids)) {
        report.failure = boundaryFailure(boundaryFile);
        return inspection;
    }
    describePolygons(inspection, ids);
    try {
        const fs::path directory(inputDirectory);
        report.failure = directoryFailure(directory);
        if (report.failure.empty()) {
            inspectFiles(directory.parent_path() / directory.filename(), withDensity, inspection);
        }
    } catch (const fs::filesystem_error& error) {
        report.failure = error.what();
    }
    if (report.failure.empty() && takenFiles(report) == 0) {
        report.failure = "the input directory holds no input file";
    }
    remarkOnPolygonsApart(report);
    report.hints = findHints(report);
    return inspection;
}

} // namespace veldtrim
