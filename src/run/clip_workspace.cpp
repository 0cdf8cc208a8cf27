#include "run/clip_workspace.h"

#include "boundary/file/boundary_reader.h"
#include "platform/file.h"
#include "run/clip_file.h"
#include "run/input_files.h"
#include "status/console.h"
#include "status/report_error.h"
#include "status/report_state.h"

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Returns the share of one record in the progress of the run, on a scale of 0 to 100; 0 if there
/// are no records.
double progressPerRecord(std::int64_t total) {
    return total > 0 ? 100.0 / static_cast<double>(total) : 0.0;
}

/// Clips every file, removes output files without records, and returns the number of kept records.
std::int64_t clipFiles(BoundaryModel& model, const std::vector<InputFile>& files,
                       const fs::path& outputDirectory) {
    std::int64_t total = 0;
    for (const InputFile& file : files) {
        total += file.recordCount;
    }
    const double progressScale = progressPerRecord(total);
    double progressOffset = 0.0;
    std::int64_t keptTotal = 0;
    for (const InputFile& file : files) {
        const fs::path outputPath = outputDirectory / fs::path(file.path).filename();
        const std::int32_t kept = clipFile(model, file.path, outputPath.string(), file.recordCount,
                                           progressOffset, progressScale);
        keptTotal += kept;
        if (kept < 1) {
            fs::remove(outputPath);
        }
        progressOffset += static_cast<double>(file.recordCount);
    }
    return keptTotal;
}

/// Returns false if the directory already exists.
bool createOutputDirectory(const fs::path& directory) {
    // If create_directory returns false, another run has just created the directory and owns it.
    if (fs::is_directory(directory) || !fs::create_directory(directory)) {
        return false;
    }
    // On Windows, creating the name of a device, such as "nul", can succeed without a directory.
    if (!fs::is_directory(directory)) {
        throw fs::filesystem_error(
            "cannot create output directory", directory,
            boost::system::errc::make_error_code(boost::system::errc::not_a_directory));
    }
    return true;
}

/// Reports a failure, but does not end the run: the clipped files are the result, and the total is
/// only a convenience.
void writeTotal(const fs::path& outputDirectory, std::int64_t keptTotal) {
    const std::string path = (outputDirectory / totalFileName).string();
    std::error_code error;
    try {
        PlatformFile file = PlatformFile::openForWriting(path);
        error = file.openError();
        file.write(std::to_string(keptTotal).append(lineEnd));
        file.close();
    } catch (const std::system_error& failure) {
        error = failure.code();
    }
    if (error) {
        reportState("Cannot write " + path + ": " + error.message());
    }
}

} // namespace

int clipWorkspace(BoundaryModel& model, std::string workspacePath, std::string inputDirName,
                  std::string outputDirName, std::string boundaryFilePath) {
    model.clearVertices();
    model.clearPolygons();
    if (!readin_b_XML(boundaryFilePath, model)) {
        return reportError("boundary file does not exist");
    }
    writeConsoleLine("boundary file read.");

    const fs::path workspace(workspacePath);
    if (!fs::is_directory(workspace)) {
        return reportError("Workspace path does not exist");
    }
    const fs::path inputDirectory = workspace / inputDirName;
    if (!fs::is_directory(inputDirectory)) {
        return reportError("Input directory does not exist");
    }
    const fs::path outputDirectory = workspace / outputDirName;
    if (!createOutputDirectory(outputDirectory)) {
        return reportError(
            "output directory already exists, aborting in order avoid overwriting of "
            "existing data");
    }

    const std::vector<InputFile> files = findInputFiles(inputDirectory.string());
    if (files.empty()) {
        return reportError("There are no input files.");
    }
    const std::int64_t keptTotal = clipFiles(model, files, outputDirectory);
    reportEndOfProgress();
    writeTotal(outputDirectory, keptTotal);
    return 0;
}

} // namespace veldtrim
