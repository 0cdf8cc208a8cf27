#include "platform/new_file.h"

#include "platform/new_name.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace veldtrim {

namespace {

/// The path of the latest unfinished file, for the signals that interrupt the process.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): handlers get no argument
std::atomic<const char*> latestUnfinished = nullptr;

#ifdef _WIN32

bool exists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
int processNumber() {
    return ::_getpid();
}

#else

bool exists(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}
int processNumber() {
    return ::getpid();
}

/// Calls only what a signal handler may call.
extern "C" void removeUnfinished(int signal) {
    if (const char* const path = latestUnfinished) {
        ::unlink(path);
    }
    static_cast<void>(::signal(signal, SIG_DFL));
    static_cast<void>(::raise(signal)); // ends the process when this handler returns
}

#endif

[[noreturn]] void failToCreate(const std::string& target, std::error_code reason) {
    throw std::system_error(reason, "cannot create " + target);
}

std::string unfinishedName(const std::string& target) {
    if (exists(target)) {
        failToCreate(target, std::make_error_code(std::errc::file_exists));
    }
    for (int number = processNumber();; ++number) {
        std::string name = target + ".part-" + std::to_string(number);
        if (!exists(name)) {
            return name;
        }
    }
}

} // namespace

NewFile::NewFile(std::string target)
    : target_(std::move(target)), unfinished_(unfinishedName(target_)),
      file_(PlatformFile::createForWriting(unfinished_)) {
    if (!file_.isOpen()) {
        unfinished_.clear();
        failToCreate(target_, file_.openError());
    }
    latestUnfinished = unfinished_.c_str();
}

NewFile::~NewFile() {
    if (unfinished_.empty()) {
        return;
    }
    try {
        file_.close();                   // Windows does not remove open files.
    } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch): the file is removed
    }
    static_cast<void>(std::remove(unfinished_.c_str()));
    forget();
}

void NewFile::write(std::string_view bytes) {
    file_.write(bytes);
}

void NewFile::publish() {
    file_.synchronize();
    file_.close();
    if (const std::error_code reason = renameToNewName(unfinished_, target_)) {
        failToCreate(target_, reason);
    }
    forget();
}

/// Called when the unfinished file is gone.
void NewFile::forget() {
    const char* path = unfinished_.c_str();
    latestUnfinished.compare_exchange_strong(path, nullptr);
    unfinished_.clear();
}

#ifdef _WIN32

void removeFileWhenInterrupted() {}

#else

void removeFileWhenInterrupted() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction current {};
        if (::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_DFL) {
            static_cast<void>(::signal(signal, removeUnfinished));
        }
    }
}

#endif

} // namespace veldtrim
