#include "run/process_setup.h"

#ifndef _WIN32
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace veldtrim {

#ifdef _WIN32

// There are no pipe signals here, and the runtime keeps the standard descriptors reserved.
void setUpProcess() {}

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

#endif

} // namespace veldtrim
