#include "inspect/inspection.h"

#include "boundary/file/boundary_walk.h"
#include "inspect/advice/boundary_advice.h"
#include "inspect/advice/file_advice.h"
#include "inspect/advice/polygon_relations.h"
#include "inspect/boundary_contents.h"
#include "inspect/file_inspector.h"
#include "inspect/hints.h"
#include "inspect/polygon_finder.h"
#include "inspect/ring_check.h"
#include "run/input_files.h"
#include "run/total_file.h"
#include "status/report_state.h"

#include <pulsenote.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include <boost/filesystem/directory.hpp>
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
    const fs::path directory = workspace / path.filename();
    if (fs::is_directory(directory)) {
        return {};
    }
    return "the input directory " + path.string() +
           (fs::exists(directory) ? " is a file; name the directory that holds the scans"
                                  : " does not exist");
}

/// Whether the two paths seem to be in the wrong order.
bool areExchanged(const std::string& inputDirectory, const std::string& boundaryFile) {
    boost::system::error_code error;
    return fs::is_directory(boundaryFile, error) && !fs::is_directory(inputDirectory, error);
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
        if (!overlaps && polygon.vertices > 0 && !report.pointBounds.isEmpty()) {
            polygon.remarks.emplace_back("it lies outside the bounds of every file");
        }
    }
}

void describeRelations(Inspection& inspection, PolygonFinder& finder,
                       const std::vector<std::int32_t>& ids) {
    for (PolygonRemark& remark : remarksOnRelations(inspection.model, finder, ids)) {
        inspection.report.polygons[remark.polygon].remarks.push_back(std::move(remark.text));
    }
}

/// Whether the directory is one that a run has written.
bool isOutputDirectory(const fs::path& directory) {
    boost::system::error_code error;
    return fs::exists(directory / totalFileName, error);
}

/// The subdirectories that hold a file with an accepted ending, except those that a run wrote.
std::vector<std::string> findSubdirectories(const fs::path& directory) {
    std::vector<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        boost::system::error_code error;
        if (!fs::is_directory(entry.path(), error) || isOutputDirectory(entry.path())) {
            continue;
        }
        for (fs::directory_iterator inner(entry.path(), error); inner != fs::directory_iterator();
             inner.increment(error)) {
            if (hasInputExtension(inner->path().string())) {
                found.push_back(entry.path().string());
                break;
            }
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// Reads the records of all files that a run would take, and reports progress as a run does.
void readFiles(const std::vector<std::string>& paths, FileInspector& inspector, Report& report) {
    double total = 0.0;
    for (const FileReport& file : report.files) {
        total += file.recordCount;
    }
    const double scale = total > 0.0 ? 100.0 / total : 0.0;
    double passed = 0.0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        FileReport& file = report.files[i];
        if (file.taken && !file.failed) {
            ProgressMessage progress(passed * scale, (passed + file.recordCount) * scale,
                                     file.recordCount);
            inspector.read(paths[i], file, progress);
            passed += file.recordCount;
        }
        file.advice = adviceOnFile(file, paths[i]);
        report.total.add(file.counts);
        report.pointBounds.add(file.bounds);
        if (file.failed && report.failure.empty()) {
            report.failure = "a run would stop at " + file.name + ": " + file.reason;
        }
    }
    reportEndOfProgress();
}

void inspectFiles(const fs::path& directory, bool withDensity, PolygonFinder& finder,
                  Inspection& inspection) {
    Report& report = inspection.report;
    if (withDensity) {
        inspection.density = std::make_unique<Density>();
    }
    std::vector<std::string> paths;
    visitFiles(directory.string(), [&](const std::string& path) { paths.push_back(path); });
    std::sort(paths.begin(), paths.end());
    std::transform(paths.begin(), paths.end(), std::back_inserter(report.files),
                   FileInspector::look);
    FileInspector inspector(inspection.model, finder, report.polygons, inspection.density.get());
    readFiles(paths, inspector, report);
    report.subdirectories = findSubdirectories(directory);
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
        if (areExchanged(inputDirectory, boundaryFile)) {
            report.hints.emplace_back(
                "the arguments may be in the wrong order: the input directory "
                "comes first, then the boundary file");
        } else if (!contents.advice().empty()) {
            report.hints.push_back(contents.advice());
        }
        return inspection;
    }
    describePolygons(inspection, contents.polygonIds());
    PolygonFinder finder(inspection.model);
    describeRelations(inspection, finder, contents.polygonIds());
    try {
        const fs::path directory(inputDirectory);
        report.failure = directoryFailure(directory);
        if (report.failure.empty()) {
            inspectFiles(directory.parent_path() / directory.filename(), withDensity, finder,
                         inspection);
        }
    } catch (const fs::filesystem_error& error) {
        report.failure = error.what();
    }
    if (report.failure.empty() && takenFiles(report) == 0) {
        report.failure = "the input directory holds no input file";
    }
    remarkOnPolygonsApart(report);
    report.hints = adviceOnContents(contents, report.polygons.size(), boundaryFile);
    const std::vector<std::string> hints = findHints(report);
    report.hints.insert(report.hints.end(), hints.begin(), hints.end());
    return inspection;
}

} // namespace veldtrim
