#include "platform/posix/orphans.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldtrim {

namespace {

void signalChildren(int signal) {
    const std::string self = std::to_string(::getpid());
    std::ifstream children("/proc/" + self + "/task/" + self + "/children");
    for (pid_t child = 0; children >> child;) {
        static_cast<void>(::kill(child, signal));
    }
}

/// Waits for children that have ended. Returns whether any is left.
bool hasChildren() {
    pid_t ended = 0;
    do {
        ended = ::waitpid(-1, nullptr, WNOHANG);
    } while (ended > 0);
    return ended == 0;
}

} // namespace

void adoptOrphans() noexcept {
    static_cast<void>(::prctl(PR_SET_CHILD_SUBREAPER, 1));
}

void endChildren(int patience) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause{5};
    const std::chrono::milliseconds mostTime(patience);
    const auto begun = Clock::now();
    while (hasChildren() && Clock::now() < begun + 2 * mostTime) {
        // Again each time: those that end leave others behind.
        signalChildren(Clock::now() < begun + mostTime ? SIGTERM : SIGKILL);
        std::this_thread::sleep_for(pause);
    }
}

} // namespace veldtrim
