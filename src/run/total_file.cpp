#include "run/total_file.h"

#include "platform/file.h"

namespace veldtrim {

std::error_code writeTotal(const std::string& path, std::int64_t keptTotal) {
    try {
        PlatformFile file = PlatformFile::openForWriting(path);
        file.write(std::to_string(keptTotal).append(lineEnd));
        file.close();
        return file.openError();
    } catch (const std::system_error& failure) {
        return failure.code();
    }
}

} // namespace veldtrim
