// What a process writes to standard error, from its first static object to its last.
#include "message_lines.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#ifndef _WIN32
#include <array>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace veldtrim::pulsenote;
using veldtrim::test::readBytes;
using veldtrim::test::TemporaryDirectory;

namespace {

/// Runs the speaker through the shell and returns its exit code.
int speak(const std::string& arguments) {
    std::string command = "\"" PULSENOTE_SPEAKER "\" " + arguments;
#ifdef _WIN32
    // If a command begins with a quote, the shell drops its first and its last one. It takes text
    // after a "/" for an option.
    command.insert(0, "\"").append("\"");
    std::replace(command.begin(), command.end(), '/', '\\');
    return std::system(command.c_str());
#else
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
}

TEST(ProcessLife, deliversEveryMessageInOrder) {
    using enum MessageKind;
    const struct {
        const char* arguments;
        int exitCode;
        bool host;
        std::string received;
    } cases[] = {
        {"person state a failed b error c finish d stretch 0 100 10 reach 0 10", 0, false,
         "a\nfailed: b\nerror: c\nd\n"},
        {"host state a failed b error c finish d", 0, true,
         hostLine(State, 1, "a", true) + hostLine(Failed, -1, "b", false) +
             hostLine(Error, 2, "c", false) + hostLine(Finish, 1, "d", false)},
        // Waiting messages are delivered in the first form that is set, or when the process ends.
        {"error a stretch 0 100 2 reach 1 1 state b person state c host state d", 0, false,
         "error: a\nb\nc\nd\n"},
        {"finish a stretch 0 100 2 reach 1 1 error b host", 0, true,
         hostLine(Finish, 1, "a", false) + hostProgressLine(50, false) +
             hostLine(Error, 2, "b", false)},
        {"state a error b exit 3", 3, false, "a\nerror: b\n"},
        // The position delivered last counts across stretches.
        {"host stretch 0 50 1000 reach 998 999 stretch 49.95 100 1 reach 0 1", 0, true,
         hostProgressLine(49.9, false) + hostProgressLine(100, false)},
    };
    const TemporaryDirectory directory;
    const std::string file = directory.path("stderr");
    for (const auto& [arguments, exitCode, host, received] : cases) {
        EXPECT_EQ(speak(std::string(arguments) + " 2> \"" + file + "\""), exitCode) << arguments;
        const auto form = host ? [](const char* text) { return hostLine(State, 0, text, false); }
                               : [](const char* text) { return personLine(State, text); };
        std::string text = readBytes(file);
        std::erase(text, '\r');
        EXPECT_EQ(text, form("first") + received + form("last")) << arguments;
    }
}

#ifndef _WIN32 // whose shell cannot close standard error
TEST(ProcessLife, continuesWhenNobodyListens) {
    // A pipe without a reader, and the default handling of the signal.
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[0]);
    constexpr int closedPipe = 9;
    dup2(ends[1], closedPipe);
    auto* const before = std::signal(SIGPIPE, SIG_DFL);

    const TemporaryDirectory directory;
    const std::string data = directory.path("data");
    for (const char* receiver : {"2>&-", "2>/dev/full", "2>&9"}) {
        EXPECT_EQ(speak("state a open " + data + " host state b exit 5 " + receiver), 5)
            << receiver;
        EXPECT_EQ(readBytes(data), "") << "gets the descriptor of a closed standard error";
    }
    std::signal(SIGPIPE, before);
    close(ends[1]);
    close(closedPipe);
}
#endif

} // namespace
