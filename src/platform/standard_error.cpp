#include "platform/standard_error.h"

#include <cerrno>

#ifdef _WIN32

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <io.h>
#include <windows.h>

namespace veldtrim {

namespace {

HANDLE standardErrorHandle() noexcept {
    const int descriptor = _fileno(stderr);
    // The runtime reports -2 for a standard stream that was closed when the process started.
    const std::intptr_t handle = descriptor >= 0 ? _get_osfhandle(descriptor) : -1;
    return handle == -2 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(handle);
}

} // namespace

bool standardErrorIsOpen() noexcept {
    return standardErrorHandle() != INVALID_HANDLE_VALUE;
}

// _isatty would take "nul" for a terminal.
bool standardErrorIsTerminal() noexcept {
    DWORD mode = 0;
    return GetConsoleMode(standardErrorHandle(), &mode) != 0;
}

std::size_t standardErrorWidth() noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(standardErrorHandle(), &info) == 0 ||
        info.srWindow.Right < info.srWindow.Left) {
        return usualTerminalWidth;
    }
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}

void writeToStandardError(std::string_view text) noexcept {
    // The stream is in text mode, which turns line feeds into the platform's line ends.
    constexpr std::size_t largestWrite = 1U << 30U;
    while (!text.empty()) {
        const auto size = static_cast<unsigned>(std::min(text.size(), largestWrite));
        const int written = _write(_fileno(stderr), text.data(), size);
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace veldtrim

#else

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace veldtrim {

namespace {

/// Whether a failed write can be repeated. If the receiver has made the pipe non-blocking, waits
/// until it reads: giving up would leave half a line.
bool canWriteAgain() noexcept {
    if (errno == EINTR) {
        return true;
    }
    if (errno != EAGAIN && errno != EWOULDBLOCK) {
        return false;
    }
    pollfd receiver{STDERR_FILENO, POLLOUT, 0};
    return poll(&receiver, 1, -1) >= 0 || errno == EINTR;
}

} // namespace

bool standardErrorIsOpen() noexcept {
    return fcntl(STDERR_FILENO, F_GETFD) != -1;
}

bool standardErrorIsTerminal() noexcept {
    return isatty(STDERR_FILENO) == 1;
}

std::size_t standardErrorWidth() noexcept {
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return usualTerminalWidth;
    }
    return size.ws_col;
}

void writeToStandardError(std::string_view text) noexcept {
    const int errnoBefore = errno;
    while (!text.empty()) {
        const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || !canWriteAgain()) {
            break;
        }
    }
    errno = errnoBefore;
}

} // namespace veldtrim

#endif
