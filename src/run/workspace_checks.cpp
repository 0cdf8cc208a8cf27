#include "run/workspace_checks.h"

#include "boundary/file/boundary_reader.h"
#include "status/console.h"
#include "status/report_error.h"

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

std::pair<std::string, std::string> splitInputPath(const std::string& inputDirPath) {
    const fs::path inputDirectory(inputDirPath);
    return {inputDirectory.parent_path().string(), inputDirectory.filename().string()};
}

RunDirectories runDirectories(const std::string& workspacePath, const std::string& inputDirName,
                              const std::string& outputDirName) {
    const fs::path workspace(workspacePath);
    return {(workspace / inputDirName).string(), (workspace / outputDirName).string()};
}

std::optional<RunDirectories> checkWorkspace(BoundaryModel& model, std::string workspacePath,
                                             std::string inputDirName, std::string outputDirName,
                                             std::string boundaryFilePath) {
    model.clearVertices();
    model.clearPolygons();
    if (!readin_b_XML(boundaryFilePath, model)) {
        reportError("boundary file does not exist");
        return {};
    }
    writeConsoleLine("boundary file read.");

    if (!fs::is_directory(fs::path(workspacePath))) {
        reportError("Workspace path does not exist");
        return {};
    }
    RunDirectories directories = runDirectories(workspacePath, inputDirName, outputDirName);
    if (!fs::is_directory(fs::path(directories.input))) {
        reportError("Input directory does not exist");
        return {};
    }
    if (fs::is_directory(fs::path(directories.output))) {
        reportOutputExists();
        return {};
    }
    return directories;
}

int reportOutputExists() {
    return reportError("output directory already exists, aborting in order avoid overwriting of "
                       "existing data");
}

int reportNoInputFiles() {
    return reportError(noInputFilesText);
}

} // namespace veldtrim
