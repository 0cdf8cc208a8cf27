/// The checks that precede a run, and the errors of those that fail.
#pragma once

#include "boundary/model/boundary_model.h"

#include <optional>
#include <string>
#include <utility>

namespace veldtrim {

/// The directories of a run.
struct RunDirectories {
    std::string input;
    std::string output;
};

/// Splits the input directory path of a command line into the workspace and the name of the input
/// directory.
std::pair<std::string, std::string> splitInputPath(const std::string& inputDirPath);

/// Returns the input directory and the output directory in the workspace.
RunDirectories runDirectories(const std::string& workspacePath, const std::string& inputDirName,
                              const std::string& outputDirName);

/// Replaces the content of `model` by that of the boundary file, and checks, in this order, that
/// the boundary file can be read, that the workspace and the input directory exist, and that the
/// output directory does not. Changes nothing on disk.
///
/// Returns the directories, or nothing if a check failed, after reporting it with reportError.
/// Throws boost::filesystem::filesystem_error if the system cannot tell whether a directory exists.
std::optional<RunDirectories> checkWorkspace(BoundaryModel& model, std::string workspacePath,
                                             std::string inputDirName, std::string outputDirName,
                                             std::string boundaryFilePath);

/// Reports, with reportError, that the output directory exists. Returns 1.
int reportOutputExists();

/// The text of the error that the input directory does not contain any input file.
inline constexpr const char* noInputFilesText = "There are no input files.";

/// Reports, with reportError, that the input directory does not contain any input file. Returns 1.
int reportNoInputFiles();

} // namespace veldtrim
