#include "message_lines.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

using namespace veldtrim::pulsenote;
using namespace std::string_view_literals;

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
    EXPECT_EQ(personLine(State, "\xC2\x9BJ \x9BJ"), "\\xc2\\x9bJ \\x9bJ\n") << "both forms of CSI";
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
    EXPECT_EQ(hostLine(Error, 2,
                       "caf\xC3\xA9 \xF0\x9F\x8C\x8D \xC2\x9B \xC2\xA0 \xE9 \xED\xA0\x80 \xF0\x9F",
                       true),
              "{\"kind\":\"error\",\"code\":2,\"text\":\"caf\xC3\xA9 \xF0\x9F\x8C\x8D \\u009b "
              "\xC2\xA0 \xEF\xBF\xBD "
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD \xEF\xBF\xBD\xEF\xBF\xBD\"}\n");
}

TEST(HostProgressLine, holdsAPlainNumberOrNothingAtAll) {
    const std::pair<double, std::string> numbers[] = {
        {-0.0, "0"}, {33.333, "33.333"}, {100, "100"}, {-7.25, "-7.25"}, {1e300, "1e+300"}};
    for (const auto& [position, number] : numbers) {
        EXPECT_EQ(hostProgressLine(position, false),
                  "{\"kind\":\"progress\",\"position\":" + number + ",\"flag\":false}\n");
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
        const int shortest = 1 + (codePoint >= 0x80 ? 1 : 0) + (codePoint >= 0x800 ? 1 : 0) +
                             (codePoint >= 0x10000 ? 1 : 0);
        const bool exists = codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
        for (int length = shortest; length <= 4; ++length) {
            const std::string bytes = encode(codePoint, length);
            const auto expected = exists && length == shortest ? bytes.size() : 0;
            ASSERT_EQ(utf8SequenceLength(bytes + "\x80"), expected) << codePoint << ' ' << length;
            const std::string cut = bytes.substr(0, bytes.size() - 1);
            ASSERT_EQ(utf8SequenceLength(cut), 0U) << codePoint << ' ' << length;
            ASSERT_EQ(utf8SequenceLength(cut + "x"), length == 1 ? 1U : 0U);
        }
    }
}

} // namespace
