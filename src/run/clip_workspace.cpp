#include "run/clip_workspace.h"

#include "run/clip_file.h"
#include "run/input_files.h"
#include "run/total_file.h"
#include "run/workspace_checks.h"
#include "status/report_state.h"

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
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
    if (!fs::create_directory(directory)) {
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

} // namespace

int clipWorkspace(BoundaryModel& model, std::string workspacePath, std::string inputDirName,
                  std::string outputDirName, std::string boundaryFilePath) {
    const std::optional<RunDirectories> directories =
        checkWorkspace(model, std::move(workspacePath), std::move(inputDirName),
                       std::move(outputDirName), std::move(boundaryFilePath));
    if (!directories) {
        return 1;
    }
    const fs::path outputDirectory(directories->output);
    if (!createOutputDirectory(outputDirectory)) {
        return reportOutputExists();
    }

    const std::vector<InputFile> files = findInputFiles(directories->input);
    if (files.empty()) {
        return reportNoInputFiles();
    }
    const std::int64_t keptTotal = clipFiles(model, files, outputDirectory);
    reportEndOfProgress();
    // Without it the run does not fail: the clipped files are the result, and the total is only a
    // convenience.
    const std::string totalPath = (outputDirectory / totalFileName).string();
    if (const std::error_code error = writeTotal(totalPath, keptTotal)) {
        reportState("Cannot write " + totalPath + ": " + error.message());
    }
    return 0;
}

} // namespace veldtrim
