/// A lock that the system releases when its process ends, however it ends.
#pragma once

#include <string>

namespace veldtrim {

/// An exclusive lock on a file, which holds for as long as the object exists. It is bound to the
/// open file, not to a number in it: nothing is left to clean up after a process that was killed,
/// and a shared file system that passes locks on, as NFS does, keeps other machines out as well.
class FileLock {
public:
    /// Opens the file at `path`, which it creates if it does not exist, and tries to lock it.
    /// Throws std::system_error, which names the file and the reason, if it cannot be opened or
    /// locked for another reason than that it is locked.
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Whether this object has the lock. If not, another one has.
    [[nodiscard]] bool isHeld() const { return held_; }

    /// Whether the locked file still is the one at its path. It is not if somebody who had the lock
    /// before removed it.
    [[nodiscard]] bool isInPlace() const;

private:
    std::string path_;
    int descriptor_;
    bool held_ = false;
};

} // namespace veldtrim
