#include "elevation/header.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

namespace veldtrim {
namespace {

const std::string firstCharacterText =
    "ERROR: first character of node file must be one of n,N,x,X ";
const std::string xyzText =
    "ERROR: Using the xyz format, the first header line must be one of x;y;z , X;Y;Z , x;y;z;g , "
    "Y;Y;Z;G , while the separator (e.g. \";\" is variable";

constexpr char untouched = '#';

struct HeaderCase {
    std::string line;
    bool accepted;
    char separator;
    char format;
    std::int32_t layout;
    std::string errorText;

    friend std::ostream& operator<<(std::ostream& out, const HeaderCase& c) {
        return out << '"' << c.line << '"';
    }
};

class Header : public testing::TestWithParam<HeaderCase> {};

TEST_P(Header, IsParsed) {
    const HeaderCase& expected = GetParam();
    char separator = untouched;
    char format = untouched;
    std::int32_t layout = -1;
    std::string errorText = "from before";
    EXPECT_EQ(parseHeader(expected.line, separator, format, layout, errorText), expected.accepted);
    EXPECT_EQ(separator, expected.separator);
    EXPECT_EQ(format, expected.format);
    EXPECT_EQ(layout, expected.layout);
    EXPECT_EQ(errorText, expected.errorText);
}

HeaderCase xyz(const std::string& line, std::int32_t layout) {
    return {line, true, line[1], 'x', layout, ""};
}
HeaderCase node(const std::string& line, char separator) {
    return {line, true, separator, line[0], 0, ""};
}
HeaderCase wrongXyz(const std::string& line) {
    return {line, false, line.size() > 1 ? line[1] : '\n', 'x', 0, xyzText};
}
HeaderCase wrongStart(const std::string& line) {
    return {line, false, untouched, 'f', 0, firstCharacterText};
}

INSTANTIATE_TEST_SUITE_P(Accepted, Header,
                         testing::Values(xyz("x;y;z", 1), xyz("X;Y;Z", 1), xyz("x;y;z;g", 2),
                                         xyz("X;Y;Z;G", 2), xyz("x y z", 1), xyz("x\ty\tz", 1),
                                         xyz("x,y,z,g", 2), xyz("xxyxz", 1), xyz("x\ry\rz", 1),
                                         xyz(std::string("x\0y\0z", 5), 1), node("nod;x;y", ';'),
                                         node("Node x y z", 'e'), node("n,x,y", ','),
                                         node("nod", '\n'), node("N", '\n')));
INSTANTIATE_TEST_SUITE_P(
    Rejected, Header,
    testing::Values(wrongXyz("x"), wrongXyz("x;"), wrongXyz("x;y"), wrongXyz("x;y;"),
                    wrongXyz("x;y;z "), wrongXyz("x;y;z;"), wrongXyz("x;y;z;g;"), wrongXyz("x;y,z"),
                    wrongXyz("x;Y;Z"), wrongXyz("X;Y;z"), wrongXyz("X;Y;Z;g"), wrongXyz("x;y;z\r"),
                    wrongXyz("x;z;y"), wrongStart(" x;y;z"), wrongStart("y;x;z"),
                    wrongStart("\xEF\xBB\xBFx;y;z"), wrongStart("\r"), wrongStart("1;2;3"),
                    HeaderCase{"", false, untouched, 'f', 0, ""}));

TEST(HeaderText, HasItsLength) {
    constexpr std::size_t firstCharacterLength = 59;
    constexpr std::size_t xyzLength = 143;
    EXPECT_EQ(firstCharacterText.size(), firstCharacterLength);
    EXPECT_EQ(xyzText.size(), xyzLength);
}

} // namespace
} // namespace veldtrim
