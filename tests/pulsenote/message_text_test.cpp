#include "message_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>

using namespace veldtrim::pulsenote;
using namespace std::string_view_literals;

namespace {

TEST(PersonLine, marksKindsAndDefusesControlCharacters) {
    struct Case {
        MessageKind kind;
        std::string_view text;
        std::string_view line;
    };
    using enum MessageKind;
    for (const Case& c : {
             Case{State, "Clipping", "Clipping\n"},
             {Finish, "Done", "Done\n"},
             {Error, "no such file", "error: no such file\n"},
             {Failed, "", "failed: \n"},
             {Error, "with a line end\n", "error: with a line end\n"},
             {State, "two\n\n", "two\\x0a\n"},
             {State, "a\rb\tc\x1b[2J\x7f"sv, "a\\x0db\\x09c\\x1b[2J\\x7f\n"},
             {State, "nul\0nul"sv, "nul\\x00nul\n"},
             {State, "C:\\data \"x\"", "C:\\data \"x\"\n"},
             {State, "caf\xC3\xA9 \xF0\x9F\x8C\x8D", "caf\xC3\xA9 \xF0\x9F\x8C\x8D\n"},
             {State, "caf\xE9", "caf\xE9\n"}, // Latin-1
             {State,
              "\xC2\x9B"
              "2J \x9B"
              "2J",
              "\\xc2\\x9b2J \\x9b2J\n"}, // both forms of CSI
         }) {
        EXPECT_EQ(personLine(c.kind, c.text), c.line);
    }
}

TEST(HostLine, carriesWhatTheKindHas) {
    using enum MessageKind;
    EXPECT_EQ(hostLine(State, 1, "a", false),
              "{\"kind\":\"state\",\"code\":1,\"text\":\"a\",\"flag\":false}\n");
    EXPECT_EQ(hostLine(Finish, std::numeric_limits<int>::min(), "", true),
              "{\"kind\":\"finish\",\"code\":-2147483648,\"text\":\"\"}\n");
    EXPECT_EQ(
        hostLine(Error, 2, "\"C:\\x\"\n\r\t\x1f\x7f", true),
        "{\"kind\":\"error\",\"code\":2,\"text\":\"\\\"C:\\\\x\\\"\\n\\r\\t\\u001f\\u007f\"}\n");
}

TEST(HostProgressLine, holdsAPlainNumberOrNothingAtAll) {
    struct Case {
        double position;
        std::string_view number;
    };
    for (const Case& c : {Case{0, "0"},
                          {-0.0, "0"},
                          {12.5, "12.5"},
                          {33.333, "33.333"},
                          {100, "100"},
                          {-7.25, "-7.25"},
                          {1e300, "1e+300"}}) {
        EXPECT_EQ(hostProgressLine(c.position, false),
                  "{\"kind\":\"progress\",\"position\":" + std::string(c.number) +
                      ",\"flag\":false}\n");
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double position : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(hostProgressLine(position, true), "");
    }
}

/// The bytes that encode `codePoint`, which may be one that UTF-8 does not allow.
std::string encode(std::uint32_t codePoint, int length) {
    if (length == 1) {
        return {static_cast<char>(codePoint)};
    }
    std::string bytes;
    for (int i = 0; i < length - 1; ++i, codePoint >>= 6U) {
        bytes.insert(bytes.begin(), static_cast<char>(0x80U | (codePoint & 0x3FU)));
    }
    const std::uint32_t mark = 0xF00U >> static_cast<unsigned>(length);
    bytes.insert(bytes.begin(), static_cast<char>((mark & 0xFFU) | codePoint));
    return bytes;
}

TEST(Utf8, acceptsEveryCodePointInItsShortestFormOnly) {
    for (std::uint32_t codePoint = 0; codePoint < 0x200000; ++codePoint) {
        const int shortest = codePoint < 0x80      ? 1
                             : codePoint < 0x800   ? 2
                             : codePoint < 0x10000 ? 3
                                                   : 4;
        const bool exists = codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
        for (int length = shortest; length <= 4; ++length) {
            const std::string bytes = encode(codePoint, length);
            const auto expected = exists && length == shortest ? bytes.size() : 0;
            ASSERT_EQ(utf8SequenceLength(bytes + "\x80"), expected) << codePoint << ' ' << length;
            ASSERT_EQ(utf8SequenceLength(bytes), expected) << codePoint << ' ' << length;
            const std::string cut = bytes.substr(0, bytes.size() - 1);
            ASSERT_EQ(utf8SequenceLength(cut), 0U) << codePoint << ' ' << length;
            ASSERT_EQ(utf8SequenceLength(cut + "x"), length == 1 ? 1U : 0U);
        }
    }
}

/// Reads a JSON string at the start of `rest` as the grammar has it; fails the test otherwise.
std::string readJsonString(std::string_view& rest) {
    std::string text;
    EXPECT_EQ(rest.front(), '"');
    rest.remove_prefix(1);
    while (!rest.empty() && rest.front() != '"') {
        const std::size_t length = utf8SequenceLength(rest);
        EXPECT_NE(length, 0U) << "not UTF-8";
        EXPECT_GE(static_cast<unsigned char>(rest.front()), 0x20);
        if (length == 0) {
            return text;
        }
        if (rest.front() != '\\') {
            text += rest.substr(0, length);
            rest.remove_prefix(length);
        } else if (rest[1] == 'u') {
            const auto codePoint =
                static_cast<std::uint32_t>(std::stoul(std::string(rest.substr(2, 4)), nullptr, 16));
            text += encode(codePoint, codePoint < 0x80 ? 1 : 2);
            rest.remove_prefix(6);
        } else {
            constexpr std::string_view Escapes = "\"\\nrt";
            const std::size_t escape = Escapes.find(rest[1]);
            EXPECT_NE(escape, std::string_view::npos);
            text += "\"\\\n\r\t"sv.substr(escape, 1);
            rest.remove_prefix(2);
        }
    }
    return text;
}

TEST(HostLine, isValidWhateverBytesTheTextHolds) {
    std::mt19937 random(20240229);
    // Bytes that begin, continue and break sequences, more often than chance would have them.
    constexpr std::string_view Favourites =
        "\xC2\x80\x9F\xA0\xE0\xED\xEF\xBF\xBD\xF0\x90\xF4\x8F\xFF\"\\\n";
    for (int round = 0; round < 50'000; ++round) {
        std::string text(random() % 12, '\0');
        for (char& c : text) {
            c = random() % 2 == 0 ? Favourites[random() % Favourites.size()]
                                  : static_cast<char>(random() % 256);
        }
        std::string expected;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t length = utf8SequenceLength(std::string_view(text).substr(at));
            expected += length == 0 ? "\xEF\xBF\xBD" : text.substr(at, length);
            at += length == 0 ? 1 : length;
        }
        const std::string line = hostLine(MessageKind::Finish, 1, text, false);
        std::string_view rest = line;
        constexpr std::string_view Before = "{\"kind\":\"finish\",\"code\":1,\"text\":";
        ASSERT_TRUE(rest.starts_with(Before));
        rest.remove_prefix(Before.size());
        ASSERT_EQ(readJsonString(rest), expected);
        ASSERT_EQ(rest, "\"}\n");
    }
}

} // namespace
