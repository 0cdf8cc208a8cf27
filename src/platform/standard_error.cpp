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
    // The runtime marks a descriptor that the process was started without by -2.
    const std::intptr_t handle = descriptor >= 0 ? _get_osfhandle(descriptor) : -1;
    return handle == -2 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(handle);
}

} // namespace

bool standardErrorIsOpen() noexcept {
    return standardErrorHandle() != INVALID_HANDLE_VALUE;
}

// Not _isatty: to that, "nul" is a terminal too.
bool standardErrorIsTerminal() noexcept {
    DWORD mode = 0;
    return GetConsoleMode(standardErrorHandle(), &mode) != 0;
}

std::size_t standardErrorWidth() noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(standardErrorHandle(), &info) == 0 ||
        info.srWindow.Right < info.srWindow.Left) {
        return UsualTerminalWidth;
    }
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}

void writeToStandardError(std::string_view text) noexcept {
    // Text mode: the line ends are the platform's.
    constexpr std::size_t LargestWrite = 1U << 30U;
    while (!text.empty()) {
        const auto size = static_cast<unsigned>(std::min(text.size(), LargestWrite));
        const int written = _write(_fileno(stderr), text.data(), size);
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace veldtrim

#else

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace veldtrim {

namespace {

/// Keeps a SIGPIPE that a write of this thread raises from reaching the process.
///
/// The signal is blocked in this thread and, if it was raised, taken out of the queue before the
/// mask goes back. Ignoring it would be shorter, but its disposition belongs to the whole process
/// and is inherited by the programs that it starts.
class PipeSignalGuard {
public:
    PipeSignalGuard() noexcept {
        sigset_t pending;
        sigemptyset(&pending);
        sigpending(&pending);
        // One that waits already is blocked already, and not ours to take away.
        if (sigismember(&pending, SIGPIPE) == 1) {
            return;
        }
        sigemptyset(&pipeSignal_);
        sigaddset(&pipeSignal_, SIGPIPE);
        active_ = pthread_sigmask(SIG_BLOCK, &pipeSignal_, &maskBefore_) == 0;
    }

    ~PipeSignalGuard() {
        if (!active_) {
            return;
        }
        sigset_t pending;
        sigemptyset(&pending);
        sigpending(&pending);
        if (sigismember(&pending, SIGPIPE) == 1) {
            int taken = 0;
            sigwait(&pipeSignal_, &taken);
        }
        pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
    }

    PipeSignalGuard(const PipeSignalGuard&) = delete;
    PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;

private:
    bool active_ = false;
    sigset_t pipeSignal_{};
    sigset_t maskBefore_{};
};

/// Whether a write that failed may be tried again. A receiver that made the pipe non-blocking is
/// waited for, as any other is: giving up half way would leave half a line.
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
        return UsualTerminalWidth;
    }
    return size.ws_col;
}

void writeToStandardError(std::string_view text) noexcept {
    const int errnoBefore = errno;
    {
        const PipeSignalGuard guard;
        while (!text.empty()) {
            const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
            if (written > 0) {
                text.remove_prefix(static_cast<std::size_t>(written));
            } else if (written == 0 || !canWriteAgain()) {
                break;
            }
        }
    }
    errno = errnoBefore;
}

} // namespace veldtrim

#endif
