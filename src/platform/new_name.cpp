#include "platform/new_name.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace veldtrim {

#ifdef _WIN32

std::error_code renameToNewName(const std::string& from, const std::string& to) {
    // Without MOVEFILE_REPLACE_EXISTING, an existing file stays.
    if (::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0) {
        return {};
    }
    const auto reason = static_cast<int>(::GetLastError());
    return reason == ERROR_ALREADY_EXISTS ? std::make_error_code(std::errc::file_exists)
                                          : std::error_code(reason, std::system_category());
}

#else

std::error_code renameToNewName(const std::string& from, const std::string& to) {
    const auto lastError = [] { return std::error_code(errno, std::generic_category()); };
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return lastError();
    }
    // File systems that cannot do this may have hard links, which do not replace a file either.
    if (::link(from.c_str(), to.c_str()) == 0) {
        static_cast<void>(::unlink(from.c_str()));
        return {};
    }
    if (errno == EEXIST) {
        return lastError();
    }
    struct stat status {};
    if (::lstat(to.c_str(), &status) == 0) {
        return std::make_error_code(std::errc::file_exists);
    }
    if (::rename(from.c_str(), to.c_str()) == 0) {
        return {};
    }
    // What the system says of a directory that has come to exist, and is not empty, depends on it.
    return errno == ENOTEMPTY ? std::make_error_code(std::errc::file_exists) : lastError();
}

#endif

} // namespace veldtrim
