/// What the system says of a file without opening it.
#pragma once

#include <cstdint>
#include <string>

namespace veldtrim {

/// A file, a directory or anything else that a path names. Links are followed.
struct FileState {
    bool exists = false;       ///< false also if the system does not tell; the rest is then 0
    bool isRegular = false;    ///< whether it is a file, not a directory, a pipe or a device
    std::int64_t size = 0;     ///< in bytes
    std::int64_t modified = 0; ///< when its content was changed, in nanoseconds since 1970
    std::uint64_t number = 0;  ///< which nothing else on its file system has as long as it exists
};

/// Returns the state of what `path` names.
FileState fileState(const std::string& path);

/// Returns whether this process may read what `path` names.
bool isReadable(const std::string& path);

} // namespace veldtrim
