// What a process writes to standard error, from its first static object to its last.
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
    const std::string hostProgress = R"({"kind":"progress","position":)";
    const struct {
        const char* arguments;
        int exitCode;
        bool host;
        std::string received;
    } cases[] = {
        {"person state=a failed=b error=c finish=d stretch=0,100,10 reach=0,10", 0, false,
         "a\nfailed: b\nerror: c\nd\n"},
        {"host state=a failed=b error=c finish=d", 0, true,
         "{\"kind\":\"state\",\"code\":1,\"text\":\"a\",\"flag\":true}\n"
         "{\"kind\":\"failed\",\"code\":-1,\"text\":\"b\"}\n"
         "{\"kind\":\"error\",\"code\":2,\"text\":\"c\"}\n"
         "{\"kind\":\"finish\",\"code\":1,\"text\":\"d\"}\n"},
        // Waiting messages are delivered in the first form that is set, or when the process ends.
        {"error=a stretch=0,100,2 reach=1,1 state=b person state=c host state=d", 0, false,
         "error: a\nb\nc\nd\n"},
        {"finish=a stretch=0,100,2 reach=1,1 error=b host", 0, true,
         "{\"kind\":\"finish\",\"code\":1,\"text\":\"a\"}\n" + hostProgress +
             "50,\"flag\":false}\n{\"kind\":\"error\",\"code\":2,\"text\":\"b\"}\n"},
        {"state=a error=b", 0, false, "a\nerror: b\n"},
        {"state=a exit=3", 3, false, "a\n"},
        // The position delivered last counts across stretches.
        {"host stretch=0,50,1000 reach=998,999 stretch=49.95,100,1 reach=0,1", 0, true,
         hostProgress + "49.9,\"flag\":false}\n" + hostProgress + "100,\"flag\":false}\n"},
    };
    const TemporaryDirectory directory;
    const std::string file = directory.path("stderr");
    for (const auto& [arguments, exitCode, host, received] : cases) {
        EXPECT_EQ(speak(std::string(arguments) + " 2> \"" + file + "\""), exitCode) << arguments;
        const auto frame = [inHostForm = host](const std::string& text) {
            return inHostForm
                       ? R"({"kind":"state","code":0,"text":")" + text + "\",\"flag\":false}\n"
                       : text + "\n";
        };
        std::string text = readBytes(file);
        std::erase(text, '\r');
        EXPECT_EQ(text, frame("first") + received + frame("last")) << arguments;
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
    const std::string messages =
        "state=a open=" + data + " host state=b stretch=0,100,9 reach=0,9 exit=5 ";
    for (const char* receiver : {"2>&-", "2>/dev/full", "2>&9"}) {
        EXPECT_EQ(speak(messages + receiver), 5) << receiver;
        EXPECT_EQ(readBytes(data), "") << "gets the descriptor of a closed standard error";
    }
    std::signal(SIGPIPE, before);
    close(ends[1]);
    close(closedPipe);
}
#endif

} // namespace
