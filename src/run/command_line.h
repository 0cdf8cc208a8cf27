/// A whole run, from the start message to the exit code.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Runs the program with the arguments of `main`: the program's name, the input directory path, the
/// output directory name, the boundary file path and, optionally, "-pipe".
///
/// Sends the start message, checks the arguments, clips, and sends the outcome. Returns the exit
/// code: 0 if the run finished, 1 after wrong arguments, a failed check or an exception, each of
/// which it reports. Catches all standard exceptions of the run.
int runCommandLine(int argc, const char* const* argv);

/// Splits `inputDirPath` into the workspace and the name of the input directory, and calls
/// clipWorkspace, whose result it returns.
int clipDirectory(BoundaryModel& model, std::string inputDirPath, std::string outputDirName,
                  std::string boundaryFilePath);

} // namespace veldtrim
