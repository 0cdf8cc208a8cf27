/// A file that no directory lists.
#pragma once

#include <string>

namespace veldtrim {

/// A file without a name, empty at first, which exists as long as the object. Other programs of the
/// same user can open it by its path, which is that of an open file of this process. Nothing is
/// left of it however the process ends.
class UnnamedFile {
public:
    /// Creates a file that takes no room on a disk: what is written to it arrives even if every
    /// disk is full. Throws std::system_error if the system has no such files or no more of them.
    static UnnamedFile inMemory();

    /// Creates a file on the disk of a directory. Throws std::system_error, which names the
    /// directory and the reason, if that fails.
    static UnnamedFile in(const std::string& directory);

    UnnamedFile(UnnamedFile&& other) noexcept;
    UnnamedFile(const UnnamedFile&) = delete;
    UnnamedFile& operator=(const UnnamedFile&) = delete;
    UnnamedFile& operator=(UnnamedFile&&) = delete;
    ~UnnamedFile();

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    explicit UnnamedFile(int descriptor);

    int descriptor_;
    std::string path_;
};

} // namespace veldtrim
