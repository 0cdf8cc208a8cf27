#ifndef _WIN32

#include "platform/standard_error.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

using veldtrim::writeToStandardError;

namespace {

/// A pipe whose writing end is standard error for as long as this lives.
class PipedStandardError {
public:
    explicit PipedStandardError(int flags) : saved_(dup(STDERR_FILENO)) {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        readEnd_ = ends[0];
        EXPECT_EQ(fcntl(ends[1], F_SETFL, flags), 0);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
    }
    ~PipedStandardError() {
        restore();
        close(saved_);
        close(readEnd_);
    }
    PipedStandardError(const PipedStandardError&) = delete;
    PipedStandardError& operator=(const PipedStandardError&) = delete;

    /// Standard error is again what it was; the reader meets the end.
    void restore() const { dup2(saved_, STDERR_FILENO); }

    void closeReader() {
        close(readEnd_);
        readEnd_ = -1;
    }

    /// Reads `size` bytes, or what comes before the end.
    std::string read(std::size_t size) const {
        std::string text(size, '\0');
        std::size_t filled = 0;
        while (filled < size) {
            const ssize_t got = ::read(readEnd_, text.data() + filled, size - filled);
            if (got <= 0) {
                break;
            }
            filled += static_cast<std::size_t>(got);
        }
        text.resize(filled);
        return text;
    }

private:
    int saved_;
    int readEnd_ = -1;
};

TEST(StandardError, closedPipeEndsNobody) {
    struct sigaction before {};
    struct sigaction deadly {};
    deadly.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &deadly, &before);
    {
        PipedStandardError receiver(0);
        receiver.closeReader();
        writeToStandardError("nobody hears\n");
    }
    // Nothing is left behind: no signal that waits, none that is blocked, no other disposition.
    sigset_t signals;
    sigpending(&signals);
    EXPECT_EQ(sigismember(&signals, SIGPIPE), 0);
    pthread_sigmask(SIG_BLOCK, nullptr, &signals);
    EXPECT_EQ(sigismember(&signals, SIGPIPE), 0);
    struct sigaction after {};
    sigaction(SIGPIPE, &before, &after);
    EXPECT_EQ(after.sa_handler, SIG_DFL);
}

TEST(StandardError, slowReaderGetsTheWholeText) {
    std::string text;
    for (int i = 0; text.size() < 1'000'000; ++i) {
        text += std::to_string(i) + "\n";
    }
    for (const int flags : {0, O_NONBLOCK}) {
        PipedStandardError receiver(flags);
        std::string received;
        std::thread reader([&] { received = receiver.read(text.size()); });
        writeToStandardError(text);
        receiver.restore();
        reader.join();
        EXPECT_TRUE(received == text) << "with flags " << flags;
    }
}

} // namespace

#endif
