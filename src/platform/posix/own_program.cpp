#include "platform/posix/own_program.h"

#include <array>
#include <cerrno>
#include <climits>
#include <system_error>

#include <unistd.h>

namespace veldtrim {

std::string ownProgram() {
    std::array<char, PATH_MAX> path{};
    const ssize_t size = ::readlink("/proc/self/exe", path.data(), path.size());
    if (size < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot read /proc/self/exe");
    }
    return {path.data(), static_cast<std::size_t>(size)};
}

} // namespace veldtrim
