/// The run as the command line asks for it, from the start message to the exit code.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Runs the program for the arguments of `main`, the program's own name first:
/// input directory path, output directory name, boundary file path and, optional, "-pipe".
///
/// Sends the start message, checks the arguments, clips, and sends how it ended. Returns the exit
/// code: 0 when the run finished, 1 after a wrong command line, a failed check or an exception of
/// the run, which all have been reported. Lets no standard exception out.
int runCommandLine(int argc, const char* const* argv);

/// Splits `inputDirPath` into the workspace and the name of the input directory, and clips that
/// workspace. Returns what clipWorkspace returns.
int clipDirectory(BoundaryModel& model, std::string inputDirPath, std::string outputDirName,
                  std::string boundaryFilePath);

} // namespace veldtrim
