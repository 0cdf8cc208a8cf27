#include "platform/standard_streams.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace veldtrim {

namespace {

#ifdef _WIN32
void keepBytes(std::FILE* stream) {
    static_cast<void>(::_setmode(::_fileno(stream), _O_BINARY));
}
#else
void keepBytes(std::FILE* /*stream*/) {}
#endif

[[noreturn]] void fail(const char* what) {
    const int reason = errno;
    throw std::system_error(reason, std::generic_category(), what);
}

} // namespace

std::string readStandardInput() {
    keepBytes(stdin);
    std::string bytes;
    std::array<char, 1U << 16U> piece{};
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), stdin)) {
        bytes.append(piece.data(), got);
    }
    if (std::ferror(stdin) != 0) {
        fail("cannot read standard input");
    }
    return bytes;
}

void writeToStandardOutput(std::string_view bytes) {
    keepBytes(stdout);
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() ||
        std::fflush(stdout) != 0) {
        fail("cannot write to standard output");
    }
}

} // namespace veldtrim
