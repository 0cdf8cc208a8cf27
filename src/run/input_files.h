/// Which files of the input directory take part in a run.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veldtrim {

/// The accepted endings as a sentence lists them: ".txt, .xyz or .node".
std::string listInputExtensions();

/// Whether the path ends in an accepted ending, byte for byte.
bool hasInputExtension(std::string path);

/// Whether the file at `path` is an input file: its name has an accepted ending and its first line
/// is an accepted header.
///
/// A file with an accepted ending that is left out is reported as a StateMessage with the reason.
bool isInputFile(std::string path);

/// Why the file at `path`, whose name has an accepted ending, is no input file; empty when it is.
std::string reasonToSkip(const std::string& path);

/// Calls `visit` with the path of everything in a directory but its subdirectories, in the order in
/// which the system lists them. Links are followed. Throws boost::filesystem::filesystem_error when
/// listing fails.
void visitFiles(const std::string& directory,
                const std::function<void(const std::string& path)>& visit);

/// A file that takes part in a run.
struct InputFile {
    std::string path;
    std::int32_t recordCount = 0;
};

/// The input files of a directory, not of its subdirectories, in the order in which the system
/// lists them, each with its record count, -1 for a file that cannot be opened any more, which is
/// reported as skipped. Links are followed. Throws
/// boost::filesystem::filesystem_error when listing fails, and as countRecords does.
std::vector<InputFile> findInputFiles(const std::string& directory);

} // namespace veldtrim
