#include "platform/file.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace veldtrim {

namespace {

#ifdef _WIN32

constexpr int binaryAndOwn = _O_BINARY | _O_NOINHERIT;
int systemOpen(const char* path, int flags) {
    const int descriptor = ::_open(path, flags | binaryAndOwn, _S_IREAD | _S_IWRITE);
    // Names such as "con" and "nul.txt" are devices in any directory. A run must not wait for the
    // keyboard.
    struct _stat64 status {};
    if (descriptor >= 0 &&
        (::_fstat64(descriptor, &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG)) {
        ::_close(descriptor);
        errno = ENODEV;
        return -1;
    }
    return descriptor;
}
auto systemRead(int descriptor, char* to, std::size_t size) {
    return ::_read(descriptor, to, static_cast<unsigned>(size));
}
auto systemWrite(int descriptor, const char* from, std::size_t size) {
    return ::_write(descriptor, from, static_cast<unsigned>(size));
}
int systemTruncate(int descriptor, std::int64_t size) {
    return ::_chsize_s(descriptor, size) == 0 ? 0 : -1;
}
std::int64_t systemSeek(int descriptor, std::int64_t offset) {
    return ::_lseeki64(descriptor, offset, SEEK_SET);
}
int systemSynchronize(int descriptor) {
    return ::_commit(descriptor);
}
int systemClose(int descriptor) {
    return ::_close(descriptor);
}

#else

int systemOpen(const char* path, int flags) {
    constexpr mode_t readAndWriteForAll = 0666;
    for (;;) {
        const int descriptor = ::open(path, flags | O_CLOEXEC, readAndWriteForAll);
        if (descriptor >= 0 || errno != EINTR) {
            return descriptor;
        }
    }
}
auto systemRead(int descriptor, char* to, std::size_t size) {
    return ::read(descriptor, to, size);
}
auto systemWrite(int descriptor, const char* from, std::size_t size) {
    return ::write(descriptor, from, size);
}
int systemTruncate(int descriptor, std::int64_t size) {
    return ::ftruncate(descriptor, size);
}
std::int64_t systemSeek(int descriptor, std::int64_t offset) {
    return ::lseek(descriptor, offset, SEEK_SET);
}
int systemSynchronize(int descriptor) {
    // Some file systems cannot do this, which they report as EINVAL.
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS ? 0 : -1;
}
int systemClose(int descriptor) {
    return ::close(descriptor);
}

#endif

/// The most bytes for one system call: all platforms accept this size.
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

[[noreturn]] void fail(const char* what, const std::string& path) {
    const int reason = errno;
    throw std::system_error(reason, std::generic_category(),
                            std::string("cannot ") + what + " " + path);
}

} // namespace

PlatformFile::PlatformFile(const std::string& path, int flags)
    : path_(path), descriptor_(systemOpen(path.c_str(), flags)) {
    if (!isOpen()) {
        openError_ = {errno, std::generic_category()};
    }
}

PlatformFile PlatformFile::openForReading(const std::string& path) {
    return {path, O_RDONLY};
}

PlatformFile PlatformFile::openForWriting(const std::string& path) {
    return {path, O_WRONLY | O_CREAT | O_TRUNC};
}

PlatformFile PlatformFile::createForWriting(const std::string& path) {
    return {path, O_WRONLY | O_CREAT | O_EXCL};
}

PlatformFile PlatformFile::openToContinue(const std::string& path, std::int64_t size) {
    PlatformFile file(path, O_WRONLY);
    if (file.isOpen()) {
        if (systemTruncate(file.descriptor_, size) != 0 ||
            systemSeek(file.descriptor_, size) != size) {
            fail("write", path);
        }
        file.written_ = size;
    }
    return file;
}

PlatformFile::PlatformFile(PlatformFile&& other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)),
      openError_(other.openError_), written_(other.written_) {}

PlatformFile::~PlatformFile() {
    if (isOpen()) {
        static_cast<void>(systemClose(descriptor_));
    }
}

std::size_t PlatformFile::read(char* to, std::size_t size) {
    if (!isOpen()) {
        return 0;
    }
    for (;;) {
        const auto got = systemRead(descriptor_, to, std::min(size, largestTransfer));
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            fail("read", path_);
        }
    }
}

void PlatformFile::moveTo(std::int64_t offset) {
    if (isOpen() && systemSeek(descriptor_, offset) != offset) {
        fail("read", path_);
    }
}

void PlatformFile::write(std::string_view bytes) {
    if (!isOpen()) {
        return;
    }
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const auto put =
            systemWrite(descriptor_, rest.data(), std::min(rest.size(), largestTransfer));
        if (put >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(put));
        } else if (errno != EINTR) {
            const int reason = errno;
            static_cast<void>(systemTruncate(descriptor_, written_));
            errno = reason;
            fail("write", path_);
        }
    }
    written_ += static_cast<std::int64_t>(bytes.size());
}

void PlatformFile::synchronize() {
    if (isOpen() && systemSynchronize(descriptor_) != 0) {
        fail("write", path_);
    }
}

void PlatformFile::close() {
    if (!isOpen()) {
        return;
    }
    // The descriptor is invalid even if closing fails: a second attempt could close another file.
    // An interrupted close does not mean that data was lost.
    if (systemClose(std::exchange(descriptor_, -1)) != 0 && errno != EINTR) {
        fail("close", path_);
    }
}

} // namespace veldtrim
