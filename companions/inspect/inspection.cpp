#include "inspect/inspection.h"

#include "boundary/file/boundary_walk.h"
#include "inspect/boundary_contents.h"
#include "inspect/file_inspector.h"
#include "inspect/hints.h"
#include "inspect/polygon_finder.h"
#include "inspect/ring_check.h"
#include "run/input_files.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Returns why the input directory cannot be used; empty if it can. Splits the path as a run does.
std::string directoryFailure(const fs::path& path) {
    const fs::path workspace = path.parent_path();
    if (!fs::is_directory(workspace)) {
        return "the workspace \"" + workspace.string() +
               "\" does not exist; for a directory in the current one, write ./" + path.string();
    }
    if (!fs::is_directory(workspace / path.filename())) {
        return "the input directory " + path.string() + " does not exist";
    }
    return {};
}

void describePolygons(Inspection& inspection, const std::vector<std::int32_t>& ids) {
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
        const bool overlaps =
            std::any_of(report.files.begin(), report.files.end(), [&](const FileReport& file) {
                return polygon.bounds.overlaps(file.bounds);
            });
        if (!overlaps && polygon.vertices > 0) {
            polygon.remarks.emplace_back("it lies outside the bounds of every file");
        }
    }
}

void inspectFiles(const fs::path& directory, bool withDensity, Inspection& inspection) {
    Report& report = inspection.report;
    if (withDensity) {
        inspection.density = std::make_unique<Density>();
    }
    PolygonFinder finder(inspection.model);
    FileInspector inspector(inspection.model, finder, report.polygons, inspection.density.get());
    std::vector<std::string> paths;
    visitFiles(directory.string(), [&](const std::string& path) { paths.push_back(path); });
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) {
        FileReport file = inspector.inspect(path);
        report.total.add(file.counts);
        report.pointBounds.add(file.bounds);
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
    BoundaryContents contents(boundaryFile);
    if (!walkBoundaryFile(boundaryFile, inspection.model, contents)) {
        report.failure = contents.failure();
        return inspection;
    }
    describePolygons(inspection, contents.polygonIds());
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
