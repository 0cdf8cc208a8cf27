#include "platform/posix/file_lock.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldtrim {

FileLock::FileLock(const std::string& path)
    : path_(path), descriptor_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    const auto fail = [&] {
        throw std::system_error(errno, std::generic_category(), "cannot lock " + path);
    };
    if (descriptor_ < 0) {
        fail();
    }
    held_ = ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
    if (!held_ && errno != EWOULDBLOCK) {
        const int reason = errno;
        ::close(descriptor_);
        errno = reason;
        fail();
    }
}

FileLock::~FileLock() {
    ::close(descriptor_);
}

bool FileLock::isInPlace() const {
    struct stat mine {};
    struct stat there {};
    return ::fstat(descriptor_, &mine) == 0 && ::stat(path_.c_str(), &there) == 0 &&
           mine.st_dev == there.st_dev && mine.st_ino == there.st_ino;
}

} // namespace veldtrim
