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

/// The console's code page before the run, whose end brings it back.
UINT codePageBefore = 0;

void restoreCodePage() {
    ::SetConsoleOutputCP(codePageBefore);
}

} // namespace

// There are no pipe signals here, and the runtime keeps the standard descriptors reserved.
void setUpProcess() {
    // The manifest asks for UTF-8; Windows before version 1903 does not know it. There all paths go
    // through the system's own code page, as they do without a word of ours.
    if (!pathsAreUtf8()) {
        return;
    }
    codePageBefore = ::GetConsoleOutputCP(); // 0 without a console
    if (codePageBefore != 0 && ::SetConsoleOutputCP(CP_UTF8) != 0) {
        static_cast<void>(std::atexit(restoreCodePage));
    }
}

bool pathsAreUtf8() {
    return ::GetACP() == CP_UTF8;
}

#else

void setUpProcess() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    // The lowest free descriptor is handed out first: this fills any gap among 0, 1 and 2.
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

bool pathsAreUtf8() {
    return false;
}

#endif

} // namespace veldtrim
