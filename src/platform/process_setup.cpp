#include "platform/process_setup.h"

#ifdef _WIN32
#include <cstdlib>

#include <windows.h>
#else
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace veldtrim {

#ifdef _WIN32

namespace {

/// The console's code page before the run; restored at the end.
UINT codePageBefore = 0;

void restoreCodePage() {
    ::SetConsoleOutputCP(codePageBefore);
}

} // namespace

// Closed standard streams need no care here: the runtime reserves their descriptors.
void setUpProcess() {
    // The manifest requests UTF-8, but Windows before version 1903 ignores that. Paths then use the
    // system's code page, as in other programs.
    if (!pathsAreUtf8()) {
        return;
    }
    codePageBefore = ::GetConsoleOutputCP(); // 0 without a console
    if (codePageBefore != 0 && ::SetConsoleOutputCP(CP_UTF8) != 0) {
        static_cast<void>(std::atexit(restoreCodePage));
    }
}

// Windows does not have this signal.
void ignorePipeSignal() noexcept {}

bool pathsAreUtf8() {
    return ::GetACP() == CP_UTF8;
}

#else

void setUpProcess() {
    ignorePipeSignal();
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    // The system assigns the lowest free descriptor, so this fills any gap among 0, 1 and 2.
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

void ignorePipeSignal() noexcept {
    struct sigaction current {};
    if (::sigaction(SIGPIPE, nullptr, &current) == 0 && current.sa_handler == SIG_DFL) {
        static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    }
}

bool pathsAreUtf8() {
    return false;
}

#endif

} // namespace veldtrim
