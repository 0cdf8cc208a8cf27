#include "platform/posix/stop_signals.h"

#include <csignal>
#include <initializer_list>

namespace veldtrim {

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): handlers get no argument
volatile std::sig_atomic_t arrived = 0;

void note(int /*signal*/) {
    arrived = 1;
}

} // namespace

void noteStopSignals(StopSignals signals) {
    for (const int each : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        if (each == SIGHUP && signals == StopSignals::ExceptHangUp) {
            continue;
        }
        if (::sigaction(each, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action = {};
            action.sa_handler = note;
            static_cast<void>(::sigaction(each, &action, nullptr));
        }
    }
}

bool stopRequested() noexcept {
    return arrived != 0;
}

} // namespace veldtrim
