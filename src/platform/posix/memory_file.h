/// A file that takes no room on a disk.
#pragma once

#include <string>

namespace veldtrim {

/// A file in memory, empty at first, which exists as long as the object. Other programs of the same
/// user can open it by its path. What they write arrives even if every disk is full.
class MemoryFile {
public:
    /// Throws std::system_error if the system has no such files or no more of them.
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    int descriptor_;
    std::string path_;
};

} // namespace veldtrim
