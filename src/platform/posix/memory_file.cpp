#include "platform/posix/memory_file.h"

#include <cerrno>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

namespace veldtrim {

MemoryFile::MemoryFile() : descriptor_(::memfd_create("veldtrim", MFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot create a file in memory");
    }
    path_ = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(descriptor_);
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

} // namespace veldtrim
