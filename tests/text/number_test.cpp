#include "judges/stream_numbers.h"
#include "text/number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

namespace veldtrim {
namespace {

template <typename Value>
void expectStreamOutcome(const std::string& text) {
    Value expected = 7;
    Value value = 7;
    const fuzz::Extraction extraction = fuzz::extract(text, expected);
    const char* at = text.data();
    const char* const end = at + text.size();
    ASSERT_EQ(readNumber(at, end, value), extraction.succeeds) << text;
    ASSERT_TRUE(fuzz::sameBits(value, expected)) << text << ": " << value;
    ASSERT_EQ(end - at, text.size() - extraction.stop) << text;
    ASSERT_EQ(at == end, extraction.sawEnd) << text;
}

void expectStreamOutcomes(const std::string& text) {
    expectStreamOutcome<double>(text);
    expectStreamOutcome<float>(text);
    expectStreamOutcome<std::int32_t>(text);
}

TEST(Number, IsWhatAStreamReads) {
    std::istringstream words(
        "1e 1e+ 12e- 0x10 0x1p4 inf nan 1e999 -1e999 1e-400 .5 5. . +3 - --1 +-1 1e5x 1,5 1.5.2 "
        "5e5e5 -0 -0.0 3.9 42abc 2147483647 2147483648 -2147483648 -2147483649 1e-310 4.9e-324 "
        "2e-324 1e-40 1e39 0e9999 9007199254740993 1e22 1e23 123456789012345678901234567890 "
        "1.7976931348623159e308 3.4028236e38 \xA0" // a blank elsewhere
        "1");
    for (std::string word; words >> word;) {
        expectStreamOutcomes(word);
        expectStreamOutcomes("\v\f\t " + word + " 2");
    }
    for (const std::string& text : {std::string(), std::string(" \t"), std::string("1\0002", 3),
                                    std::string(5000, '0') + "1.5e3", "0." + std::string(5000, '3'),
                                    "1e" + std::string(5000, '9')}) {
        expectStreamOutcomes(text);
    }
    std::mt19937_64 random(5);
    const std::string characters = "001234567899....eE+- ,;x";
    for (int round = 0; round < 100000 && !HasFatalFailure(); ++round) {
        std::string text;
        for (std::uint64_t n = random() % 24; n > 0; --n) {
            text += characters[random() % characters.size()];
        }
        expectStreamOutcomes(text);
        char number[32];
        std::snprintf(number, sizeof number, "%.17g", std::bit_cast<double>(random()));
        expectStreamOutcomes(number);
    }
}

TEST(Number, DoesNotDependOnTheGlobalLocale) {
    struct CommaForPoint : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
    for (const std::string_view text : {"1.234,5", "1.234x" /* by the stream */}) {
        const char* at = text.data();
        double value = 0;
        EXPECT_TRUE(readNumber(at, at + text.size(), value)) << text;
        EXPECT_EQ(value, 1.234) << text;
    }
    std::locale::global(before);
}

} // namespace
} // namespace veldtrim
