#include "elevation/header.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace veldtrim {
namespace {

// Whole runs show which headers are accepted and the words for the others; here is what a header
// says about the records, and what a rejected one leaves behind.
TEST(Header, TellsSeparatorFormatAndLayout) {
    struct Case {
        std::string line;
        bool accepted;
        std::optional<char> separator; // '#' where it stays as it was
        char format;
        std::int32_t layout;
        std::size_t errorLength = 0;
    };
    constexpr std::size_t wrongStart = 59;
    constexpr std::size_t wrongXyz = 143;
    for (const Case& c :
         {Case{"x;y;z", true, ';', 'x', 1}, Case{"X;Y;Z", true, ';', 'x', 1},
          Case{"x y z g", true, ' ', 'x', 2}, Case{"X,Y,Z,G", true, ',', 'x', 2},
          Case{std::string("x\0y\0z", 5), true, '\0', 'x', 1}, Case{"nod;x;y", true, ';', 'n', 0},
          Case{"Node x y z", true, 'e', 'N', 0}, Case{"nod", true, {}, 'n', 0},
          Case{"x", false, {}, 'x', 0, wrongXyz}, Case{"x;y", false, ';', 'x', 0, wrongXyz},
          Case{"x;y;z\r", false, ';', 'x', 0, wrongXyz},
          Case{"y;x", false, '#', 'f', 0, wrongStart}, Case{"\r", false, '#', 'f', 0, wrongStart},
          Case{"", false, '#', 'f', 0}}) {
        ElevationHeader header{'#', '#', -1};
        std::string errorText = "from before";
        EXPECT_EQ(readHeader(c.line, header, errorText), c.accepted) << c.line;
        EXPECT_EQ(header.hasSeparator(), c.separator.has_value()) << c.line;
        EXPECT_EQ(header.separator, c.separator.value_or(header.separator)) << c.line;
        EXPECT_EQ(header.format, c.format) << c.line;
        EXPECT_EQ(header.layout, c.layout) << c.line;
        EXPECT_EQ(errorText.size(), c.errorLength) << c.line;
    }
}

} // namespace
} // namespace veldtrim
