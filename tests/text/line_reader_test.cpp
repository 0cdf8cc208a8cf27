#include "support/temporary_directory.h"
#include "text/line_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldtrim {
namespace {

using Lines = std::vector<std::pair<std::string, std::string>>; // text and raw

/// The lines of a file. With `ahead` they are looked at only when no further line is at hand.
Lines readAll(LineReader reader, bool ahead = true) {
    Lines lines;
    std::vector<Line> atHand(1);
    while (reader.next(atHand.front())) {
        const std::string_view rest = ahead ? reader.atHand() : "";
        for (std::size_t at = 0; at < rest.size(); at += atHand.back().raw.size()) {
            const char* const first = rest.data() + at;
            atHand.push_back(lineUpTo(first, findLineFeed(first, rest.data() + rest.size())));
        }
        reader.skip(rest.size());
        for (const Line& line : atHand) {
            lines.emplace_back(line.text, line.raw);
        }
        atHand.resize(1);
    }
    EXPECT_TRUE(atHand.front().text.empty());
    return lines;
}

TEST(LineReader, EndsLinesAtLineFeeds) {
    const test::TemporaryDirectory directory;
    const std::string bytes("a\r\n\n\r\nc\rd\r\r\n\x1A\0f\ng\r", 18);
    const Lines expected{{"a", "a\r\n"},
                         {"", "\n"},
                         {"", "\r\n"},
                         {"c\rd\r", "c\rd\r\r\n"},
                         {std::string("\x1A\0f", 3), std::string("\x1A\0f\n", 4)},
                         {"g\r", "g\r"}};
    EXPECT_EQ(readAll(LineReader(directory.write("lines", bytes))), expected);
    EXPECT_EQ(readAll(LineReader(directory.path("missing"))), Lines{});
    const Lines cut{{"abc", "abc"}, {"de", "de\n"}, {"fgh", "fgh\n"}, {"i", "i"}};
    EXPECT_EQ(readAll(LineReader(directory.write("lines", "abcde\nfgh\ni"), 3)), cut);
}

// Lines of all lengths around the size of a block: every line end falls on every side of a seam.
TEST(LineReader, JoinsLinesAcrossBlocks) {
    const test::TemporaryDirectory directory;
    std::mt19937 random(7);
    const std::vector<std::size_t> lengths{0, 1, 26, 4095, 65536, 262143, 262144, 262145, 900000};
    for (int round = 0; round < 4; ++round) {
        std::string bytes;
        Lines expected;
        for (int i = 0; i < 60; ++i) {
            const std::string text(lengths[random() % lengths.size()] + random() % 2,
                                   static_cast<char>('a' + i % 26));
            const std::string raw = text + (random() % 2 == 0 ? "\n" : "\r\n");
            bytes += raw;
            expected.emplace_back(text, raw);
        }
        const std::string path = directory.write("lines", bytes);
        ASSERT_EQ(readAll(LineReader(path), false), expected);
        ASSERT_EQ(readAll(LineReader(path)), expected);
    }
}

} // namespace
} // namespace veldtrim
