#include "platform/document_file.h"

#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#endif

namespace veldtrim {
namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

#ifdef _WIN32

using Status = struct _stat64;

File openForReading(const char* path) {
    const int descriptor = ::_open(path, _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    return File(descriptor < 0 ? nullptr : ::_fdopen(descriptor, "rb"));
}
bool getStatus(std::FILE* file, Status& status) {
    return ::_fstat64(::_fileno(file), &status) == 0;
}

#else

using Status = struct stat;

File openForReading(const char* path) {
    // Without O_NONBLOCK, opening a named pipe waits for its writer. Regular files ignore the flag.
    const int descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    return File(descriptor < 0 ? nullptr : ::fdopen(descriptor, "rb"));
}
bool getStatus(std::FILE* file, Status& status) {
    return ::fstat(::fileno(file), &status) == 0;
}

#endif

} // namespace

bool readDocumentFile(const char* path, std::int64_t mostBytes, std::string& text) {
    const File file = openForReading(path);
    Status status{};
    // Checks the open file, not its name: on Windows, names such as "con" refer to devices.
    if (!file || !getStatus(file.get(), status) || (status.st_mode & S_IFMT) != S_IFREG ||
        status.st_size <= 0 || status.st_size > mostBytes) {
        return false;
    }
    text.resize(static_cast<std::size_t>(status.st_size));
    return std::fread(text.data(), text.size(), 1, file.get()) == 1;
}

} // namespace veldtrim
