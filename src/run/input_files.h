/// Selects the input files of a run.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veldtrim {

/// Returns the accepted endings as a list for messages: ".txt, .xyz or .node".
std::string listInputExtensions();

/// Whether the path has an accepted ending. Case matters.
bool hasInputExtension(std::string path);

/// Whether the file at `path` is an input file: its name has an accepted ending and its first line
/// is an accepted header.
///
/// If the file is skipped although its ending is accepted, sends a StateMessage with the reason.
bool isInputFile(std::string path);

/// Returns why the file at `path`, whose name has an accepted ending, is not an input file. The
/// result is empty if it is one.
std::string reasonToSkip(const std::string& path);

/// Calls `visit` with the path of everything in a directory except its subdirectories, in the order
/// in which the system lists them. Follows links. Throws boost::filesystem::filesystem_error if the
/// directory cannot be listed.
void visitFiles(const std::string& directory,
                const std::function<void(const std::string& path)>& visit);

/// A file that takes part in a run.
struct InputFile {
    std::string path;
    std::int32_t recordCount = 0;
};

/// Returns the input files of a directory, without those of its subdirectories, and their record
/// counts, in the order in which the system lists them. A file that can no longer be opened has the
/// count -1 and is reported as skipped. Throws what visitFiles and countRecords throw.
std::vector<InputFile> findInputFiles(const std::string& directory);

} // namespace veldtrim
