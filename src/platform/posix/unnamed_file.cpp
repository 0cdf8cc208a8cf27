#include "platform/posix/unnamed_file.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace veldtrim {

namespace {

/// Creates a file and removes its name at once. Returns a negative number if that fails.
int createAndRemove(const std::string& directory) {
    std::string name = directory + "/veldtrim-XXXXXX";
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0) {
        ::unlink(name.c_str());
    }
    return descriptor;
}

} // namespace

UnnamedFile UnnamedFile::inMemory() {
    const int descriptor = ::memfd_create("veldtrim", MFD_CLOEXEC);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot create a file in memory");
    }
    return UnnamedFile(descriptor);
}

UnnamedFile UnnamedFile::in(const std::string& directory) {
    constexpr mode_t forTheUser = 0600;
    int descriptor = ::open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, forTheUser);
    if (descriptor < 0 && (errno == EOPNOTSUPP || errno == EISDIR)) {
        descriptor = createAndRemove(directory); // NFS, for example, has no files without a name
    }
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(),
                                "cannot create a file in " + directory);
    }
    return UnnamedFile(descriptor);
}

UnnamedFile::UnnamedFile(int descriptor)
    : descriptor_(descriptor),
      path_("/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(descriptor)) {}

UnnamedFile::UnnamedFile(UnnamedFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

UnnamedFile::~UnnamedFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace veldtrim
