#include "platform/posix/file_state.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldtrim {

FileState fileState(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return {};
    }
    constexpr std::int64_t nanosecondsInSecond = 1'000'000'000;
    FileState state;
    state.exists = true;
    state.isRegular = S_ISREG(status.st_mode);
    state.size = status.st_size;
    state.modified = status.st_mtim.tv_sec * nanosecondsInSecond + status.st_mtim.tv_nsec;
    state.number = status.st_ino;
    return state;
}

bool isReadable(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

} // namespace veldtrim
