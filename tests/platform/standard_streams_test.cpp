#ifndef _WIN32

#include "platform/process_setup.h"
#include "platform/standard_error.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

TEST(ProcessSetup, ignoresThePipeSignalUnlessTheProgramHandlesIt) {
    const auto handler = [](int) {};
    auto* const before = std::signal(SIGPIPE, SIG_DFL);
    veldtrim::ignorePipeSignal();
    EXPECT_EQ(std::signal(SIGPIPE, handler), SIG_IGN);
    veldtrim::ignorePipeSignal();
    EXPECT_EQ(std::signal(SIGPIPE, before), static_cast<void (*)(int)>(handler));
}

/// What a reader receives when `text` is written to a pipe with `flags` as standard error.
std::string receivedThroughPipe(const std::string& text, int flags) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    EXPECT_EQ(fcntl(ends[1], F_SETFL, flags), 0);
    const int saved = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    std::string received;
    std::thread reader([&] {
        std::FILE* const stream = fdopen(ends[0], "r");
        for (int byte = 0; (byte = std::getc(stream)) != EOF;) {
            received += static_cast<char>(byte);
        }
        std::fclose(stream);
    });
    veldtrim::writeToStandardError(text);
    dup2(saved, STDERR_FILENO);
    close(saved);
    reader.join();
    return received;
}

TEST(StandardError, slowReaderGetsTheWholeText) {
    std::string text;
    for (int i = 0; text.size() < 1'000'000; ++i) {
        text += std::to_string(i) + "\n";
    }
    for (const int flags : {0, O_NONBLOCK}) {
        EXPECT_TRUE(receivedThroughPipe(text, flags) == text) << "with flags " << flags;
    }
}

} // namespace

#endif
