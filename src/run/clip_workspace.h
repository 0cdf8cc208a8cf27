/// The batch over one workspace: every input file of a directory, clipped into a new directory.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Name of the file in the output directory that holds the number of kept records.
inline constexpr const char* totalFileName = "total_node_count.txt";

/// Loads the boundary file into `model` (what it held before is dropped), clips every input file of
/// the directory `inputDirName` in `workspacePath` into the new directory `outputDirName` beside
/// it, and writes the number of kept records to `totalFileName` there.
///
/// Returns 0 when the batch ran to its end, 1 when a check failed, which reportError has then
/// reported: boundary file, workspace, input directory, an output directory that is already there,
/// no input file. Nothing on disk is changed before all but the last of these have passed; the new
/// output directory stays, also when the batch ends later. Throws
/// boost::filesystem::filesystem_error and std::system_error when the system fails,
/// std::length_error for a file with more records than can be counted; output files then stay as
/// far as they were written.
int clipWorkspace(BoundaryModel& model, std::string workspacePath, std::string inputDirName,
                  std::string outputDirName, std::string boundaryFilePath);

} // namespace veldtrim
