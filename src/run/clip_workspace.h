/// Clips every input file of a directory into a new directory.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Replaces the content of `model` by that of the boundary file, clips every input file of the
/// directory `inputDirName` in `workspacePath` into the new directory `outputDirName` beside it,
/// and writes the number of kept records to the total file there.
///
/// Returns 0 if all files were clipped, and 1 if a check failed, after reporting it with
/// reportError. The checks are, in this order: the boundary file can be read, the workspace and the
/// input directory exist, the output directory does not exist, and there are input files. All but
/// the last precede any change on disk; the new output directory stays even if the run then fails.
///
/// Throws boost::filesystem::filesystem_error or std::system_error if the system fails,
/// std::length_error if a file has more records than can be counted, and std::bad_alloc if memory
/// runs out. Output files then stay as far as they were written.
int clipWorkspace(BoundaryModel& model, std::string workspacePath, std::string inputDirName,
                  std::string outputDirName, std::string boundaryFilePath);

} // namespace veldtrim
