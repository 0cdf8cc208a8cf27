#include "message_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

using namespace veldtrim::pulsenote;
using namespace std::literals;

namespace {

TEST(PersonLine, marksKindsAndDefusesControlCharacters) {
    using enum MessageKind;
    EXPECT_EQ(personLine(Finish, "Done"), "Done\n");
    EXPECT_EQ(personLine(Error, "with a line end\n"), "error: with a line end\n");
    EXPECT_EQ(personLine(Failed, ""), "failed: \n");
    EXPECT_EQ(personLine(State, "two\n\n"), "two\\x0a\n");
    EXPECT_EQ(personLine(State, "a\rb\tc\x1b[2J\x7f\0"sv), "a\\x0db\\x09c\\x1b[2J\\x7f\\x00\n");
    EXPECT_EQ(personLine(State, "C:\\data \"x\""), "C:\\data \"x\"\n");
    EXPECT_EQ(personLine(State, "caf\xC3\xA9 \xF0\x9F\x8C\x8D"), "caf\xC3\xA9 \xF0\x9F\x8C\x8D\n");
    EXPECT_EQ(personLine(State, "caf\xE9"), "caf\xE9\n") << "Latin-1";
    EXPECT_EQ(personLine(State, "\xC2\x9BJ \x9FJ"), "\\xc2\\x9bJ \\x9fJ\n") << "both forms";
}

TEST(HostLine, carriesWhatTheKindHas) {
    using enum MessageKind;
    EXPECT_EQ(hostLine(State, 1, "a", false),
              R"({"kind":"state","code":1,"text":"a","flag":false})" + "\n"s);
    EXPECT_EQ(hostLine(Finish, std::numeric_limits<int>::min(), "", true),
              R"({"kind":"finish","code":-2147483648,"text":""})" + "\n"s);
    EXPECT_EQ(hostLine(Failed, 2, "\"C:\\x\"\n\r\t\x1f\x7f", true),
              R"({"kind":"failed","code":2,"text":"\"C:\\x\"\n\r\t\u001f\u007f"})" + "\n"s);
    const std::string wellFormed = "caf\xC3\xA9 \xF0\x9F\x8C\x8D \xC2\xA0 ";
    EXPECT_EQ(hostLine(Error, 2, wellFormed + "\xC2\x9F \xE9 \xF0\x9F", true),
              R"({"kind":"error","code":2,"text":")" + wellFormed +
                  "\\u009f \xEF\xBF\xBD \xEF\xBF\xBD\xEF\xBF\xBD\"}\n");
}

TEST(HostProgressLine, containsAPlainNumberOrIsEmpty) {
    const std::pair<double, std::string> numbers[] = {
        {-0.0, "0"}, {33.333, "33.333"}, {100, "100"}, {-7.25, "-7.25"}, {1e300, "1e+300"}};
    for (const auto& [position, number] : numbers) {
        EXPECT_EQ(hostProgressLine(position, false),
                  "{\"kind\":\"progress\",\"position\":" + number + ",\"flag\":false}\n");
    }
    for (const double position : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(hostProgressLine(position, true), "");
    }
}

TEST(Utf8, acceptsWellFormedSequencesOnly) {
    // The ends of each range of code points are well-formed unless a byte is missing or wrong.
    for (const std::string sequence :
         {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(utf8SequenceLength(sequence + "\x80"), sequence.size()) << sequence;
        for (std::size_t i = 1; i < sequence.size(); ++i) {
            EXPECT_EQ(utf8SequenceLength(sequence.substr(0, i)), 0U) << sequence;
            for (const char wrong : {'\x7F', '\xC0'}) {
                std::string broken = sequence;
                broken[i] = wrong;
                EXPECT_EQ(utf8SequenceLength(broken), 0U) << sequence << ", byte " << i;
            }
        }
    }
    for (const std::string sequence :
         {"", "\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"}) {
        EXPECT_EQ(utf8SequenceLength(sequence), 0U) << sequence;
    }
}

} // namespace
