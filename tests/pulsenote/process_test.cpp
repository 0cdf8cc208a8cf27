// What leaves a process on standard error, for the whole life of the process.
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#ifndef _WIN32
#include <sys/wait.h>
#endif

using veldtrim::test::readBytes;
using veldtrim::test::TemporaryDirectory;

namespace {

struct Outcome {
    int exitCode;
    std::string standardError;
};

int exitCodeOf(int status) {
#ifdef _WIN32
    return status;
#else
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
}

/// The command with which the shell runs the speaker, what it says going to `received`.
std::string speakCommand(const std::string& arguments, const std::string& received) {
    std::string command = "\"" PULSENOTE_SPEAKER "\" " + arguments + " 2> \"" + received + "\"";
#ifdef _WIN32
    // The shell drops the first and the last quote of a command that begins with one, and takes
    // what follows a "/" for an option.
    command.insert(0, "\"").append("\"");
    std::replace(command.begin(), command.end(), '/', '\\');
#endif
    return command;
}

Outcome speak(const std::string& arguments) {
    const TemporaryDirectory directory;
    const std::string received = directory.path("stderr");
    const int status = std::system(speakCommand(arguments, received).c_str());
    std::string text = readBytes(received);
    std::erase(text, '\r');
    return {exitCodeOf(status), std::move(text)};
}

/// The positions among the host's lines, separated by blanks.
std::string positionsOf(const std::string& arguments) {
    const std::string lines = speak("host " + arguments).standardError;
    const std::string before = R"({"kind":"progress","position":)";
    std::string positions;
    for (std::size_t at = lines.find(before); at != std::string::npos;
         at = lines.find(before, at + 1)) {
        const std::size_t begin = at + before.size();
        if (!positions.empty()) {
            positions += ' ';
        }
        positions += lines.substr(begin, lines.find(',', begin) - begin);
    }
    return positions;
}

struct LifeCase {
    const char* name;
    const char* arguments;
    int exitCode;
    const char* standardError;
};

void PrintTo(const LifeCase& life, std::ostream* out) {
    *out << life.arguments;
}

class ProcessLife : public testing::TestWithParam<LifeCase> {};

TEST_P(ProcessLife, delivers) {
    const LifeCase& life = GetParam();
    const Outcome outcome = speak(life.arguments);
    EXPECT_EQ(outcome.exitCode, life.exitCode);
    EXPECT_EQ(outcome.standardError, life.standardError);
}

INSTANTIATE_TEST_SUITE_P(
    , ProcessLife,
    testing::Values(LifeCase{"person",
                             "person state=a failed=b error=c finish=d A=0,100,10 a=0..10", 0,
                             "a\nfailed: b\nerror: c\nd\n"},
                    LifeCase{"host", "host state=a failed=b error=c finish=d", 0,
                             "{\"kind\":\"state\",\"code\":1,\"text\":\"a\",\"flag\":true}\n"
                             "{\"kind\":\"failed\",\"code\":-1,\"text\":\"b\"}\n"
                             "{\"kind\":\"error\",\"code\":2,\"text\":\"c\"}\n"
                             "{\"kind\":\"finish\",\"code\":1,\"text\":\"d\"}\n"},
                    LifeCase{"heldBackForPerson", "error=a A=0,100,2 a=1 state=b person state=c", 0,
                             "error: a\nb\nc\n"},
                    LifeCase{"heldBackForHost", "finish=a A=0,100,2 a=1 error=b host finish=c", 0,
                             "{\"kind\":\"finish\",\"code\":1,\"text\":\"a\"}\n"
                             "{\"kind\":\"progress\",\"position\":50,\"flag\":false}\n"
                             "{\"kind\":\"error\",\"code\":2,\"text\":\"b\"}\n"
                             "{\"kind\":\"finish\",\"code\":1,\"text\":\"c\"}\n"},
                    LifeCase{"formIsFixedOnce", "person state=a host state=b", 0, "a\nb\n"},
                    LifeCase{"formNeverKnown", "state=a error=b", 0, "a\nerror: b\n"},
                    LifeCase{"formNeverKnownAndExit", "state=a exit=3", 3, "a\n"},
                    LifeCase{"afterTheSendersEnd", "late=last state=a", 0, "a\nlast\n"}),
    [](const auto& life) { return std::string(life.param.name); });

TEST(ProgressDelivery, thinsWhatIsNoNews) {
    // One a tenth of a percent, however many steps lie between.
    EXPECT_EQ(positionsOf("A=0,1,10000000 a=0..10000000"),
              "0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1");
    // The last position counts across stretches, and 100 is news from however near.
    EXPECT_EQ(positionsOf("A=0,50,1000 a=998..999 A=50,100,2 a=0 a=1 A=99.9,100,10 a=0 a=9 a=10"),
              "49.9 50 75 99.9 100");
    // Not twice, though.
    EXPECT_EQ(positionsOf("A=1,100,100 a=100 a=100 A=0,100,1 a=1"), "100");
}

TEST(ProgressDelivery, takesStepsInAnyOrder) {
    EXPECT_EQ(positionsOf("A=0,100,100 a=50 a=-2147483648 a=2147483647 a=50 a=50 a=0..-2"),
              "50 -2147483648 2147483647 50 0 -1 -2");
    EXPECT_EQ(positionsOf("A=100,0,4 a=0..4"), "100 75 50 25 0");
    EXPECT_EQ(positionsOf("A=0,100,1000 a=30..0"), "3 2.9 2.8 2.7 2.6 2.5 2.4 2.3 2.2 2.1 2 1.9 "
                                                   "1.8 1.7 1.6 1.5 1.4 1.3 1.2 1.1 1 0.9 0.8 0.7 "
                                                   "0.6 0.5 0.4 0.3 0.2 0.1 0");
}

TEST(ProgressDelivery, takesAnyNumbers) {
    EXPECT_EQ(positionsOf("A=0,0,0 a=0..9"), "0");
    EXPECT_EQ(positionsOf("A=7,100,-5 a=3 a=-3"), "7");
    EXPECT_EQ(positionsOf("A=nan,100,5 a=0..5 A=0,inf,5 a=0..5 A=-8e307,8e307,1 a=0..1"),
              "-8e+307 8e+307");
    EXPECT_EQ(positionsOf("A=1e300,1e300,0 a=0 a=1"), "1e+300");
}

TEST(ProgressDelivery, overlappingStretchesShareTheLastPosition) {
    // A's quiet steps around 10 are quiet no longer once B has said 50.
    EXPECT_EQ(positionsOf("A=0,100,10000 B=50,60,2 a=1000..1005 b=0 a=1005 b=0"), "10 50 10.05 50");
}

TEST(Receiver, failuresChangeNothing) {
#ifdef _WIN32
    GTEST_SKIP() << "needs a shell that can close standard error";
#else
    const auto exitCode = [](const std::string& arguments) {
        return exitCodeOf(std::system(("\"" PULSENOTE_SPEAKER "\" " + arguments).c_str()));
    };
    EXPECT_EQ(exitCode("state=a host state=b A=0,100,9 a=0..9 exit=5 2>&-"), 5);
    EXPECT_EQ(exitCode("state=a person state=b exit=5 2>/dev/full"), 5);

    // A file that takes the number of the closed standard error receives no message.
    const TemporaryDirectory directory;
    const std::string data = directory.path("data");
    EXPECT_EQ(exitCode("state=a open=" + data + " host state=b A=0,100,9 a=0..9 2>&-"), 0);
    EXPECT_EQ(readBytes(data), "");
#endif
}

TEST(Receiver, hearsMessagesFromBeforeMain) {
#ifdef _WIN32
    ASSERT_EQ(_putenv("SPEAKER_FIRST_WORDS=first"), 0);
    const Outcome outcome = speak("person state=a");
    _putenv("SPEAKER_FIRST_WORDS=");
#else
    ASSERT_EQ(setenv("SPEAKER_FIRST_WORDS", "first", 1), 0);
    const Outcome outcome = speak("person state=a");
    unsetenv("SPEAKER_FIRST_WORDS");
#endif
    EXPECT_EQ(outcome.standardError, "first\na\n");
}

} // namespace
