#include "platform/posix/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldtrim {

namespace {

bool redirect(const std::string& path, int flags, int to) {
    constexpr mode_t readAndWriteForAll = 0666;
    const int descriptor = ::open(path.c_str(), flags, readAndWriteForAll);
    return descriptor >= 0 && ::dup2(descriptor, to) == to &&
           (descriptor == to || ::close(descriptor) == 0);
}

bool redirectAll(const ChildCommand& command) {
    constexpr int created = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
    const int errorFlags = command.errors == command.output ? O_WRONLY | O_APPEND : created;
    return redirect(command.input, O_RDONLY, STDIN_FILENO) &&
           redirect(command.output, created, STDOUT_FILENO) &&
           redirect(command.errors, errorFlags, STDERR_FILENO);
}

/// This process ignores these signals, and a program that it starts would inherit that.
void resetSignals() {
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    static_cast<void>(std::signal(SIGXFSZ, SIG_DFL));
}

/// Becomes the program. Returns only if that fails, with the reason in errno.
void become(const ChildCommand& command, const std::vector<char*>& words, int parent) {
    resetSignals();
    if (command.ownGroup) {
        static_cast<void>(::setpgid(0, 0));
    }
    static_cast<void>(::prctl(PR_SET_PDEATHSIG, SIGTERM));
    if (::getppid() != parent) {
        ::_exit(1); // the parent ended before the call above
    }
    if (::chdir(command.directory.c_str()) != 0 || !redirectAll(command)) {
        return;
    }
    for (const auto& [name, value] : command.variables) {
        if (::setenv(name.c_str(), value.c_str(), 1) != 0) {
            return;
        }
    }
    ::execvp(words.front(), words.data());
}

/// Returns what the new process wrote to the pipe before it ended: why it did not become the
/// program; 0 if it did.
int readReason(int pipe) {
    int reason = 0;
    ssize_t got = 0;
    do {
        got = ::read(pipe, &reason, sizeof reason);
    } while (got < 0 && errno == EINTR);
    return got == sizeof reason ? reason : 0;
}

ChildEnd endFrom(int status) {
    return WIFSIGNALED(status) ? ChildEnd{0, WTERMSIG(status)} : ChildEnd{WEXITSTATUS(status), 0};
}

} // namespace

std::string ChildEnd::text() const {
    return signal != 0 ? "signal " + std::to_string(signal)
                       : "exit code " + std::to_string(exitCode);
}

ChildProcess::ChildProcess(const ChildCommand& command) : ownGroup_(command.ownGroup) {
    std::vector<std::string> copies = command.words;
    std::vector<char*> words;
    words.reserve(copies.size() + 1);
    for (std::string& word : copies) {
        words.push_back(word.data());
    }
    words.push_back(nullptr);
    const auto fail = [&](int reason) {
        throw std::system_error(reason, std::generic_category(), "cannot start " + copies.front());
    };

    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        fail(errno);
    }
    const int parent = ::getpid();
    number_ = ::fork();
    if (number_ == 0) {
        become(command, words, parent);
        const int reason = errno;
        static_cast<void>(::write(pipe[1], &reason, sizeof reason) == sizeof reason);
        ::_exit(1);
    }
    const int reason = number_ < 0 ? errno : 0;
    ::close(pipe[1]);
    const int reasonOfChild = number_ < 0 ? 0 : readReason(pipe[0]);
    ::close(pipe[0]);
    if (reason != 0) {
        fail(reason);
    }
    if (reasonOfChild != 0) {
        wait();
        fail(reasonOfChild);
    }
    // If there is no descriptor for it, waitFor notices the end when its time is over.
    watch_ = static_cast<int>(::syscall(SYS_pidfd_open, number_, 0));
}

ChildProcess::~ChildProcess() {
    if (number_ > 0) {
        stop();
        wait();
    }
    if (watch_ >= 0) {
        ::close(watch_);
    }
}

std::optional<ChildEnd> ChildProcess::waitFor(int milliseconds) {
    pollfd end{watch_, POLLIN, 0};
    static_cast<void>(::poll(&end, 1, milliseconds));
    int status = 0;
    if (::waitpid(number_, &status, WNOHANG) != number_) {
        return {};
    }
    number_ = -1;
    return endFrom(status);
}

ChildEnd ChildProcess::wait() {
    int status = 0;
    while (::waitpid(number_, &status, 0) < 0 && errno == EINTR) {
    }
    number_ = -1;
    return endFrom(status);
}

void ChildProcess::stop() const {
    if (number_ > 0) {
        static_cast<void>(::kill(ownGroup_ ? -number_ : number_, SIGTERM));
    }
}

} // namespace veldtrim
