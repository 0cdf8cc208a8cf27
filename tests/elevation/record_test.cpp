#include "elevation/record.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <locale>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {
namespace {

using Point = std::optional<ElevationPoint>;

Point parse(std::string_view line, char separator, char format = 'x') {
    ElevationPoint point;
    return parseRecord(line, format, separator, point) ? Point(point) : std::nullopt;
}

/// What a record is by definition: formatted extraction from a string stream, step by step.
Point byDefinition(std::string_view line, char separator) {
    std::istringstream stream{std::string(line)};
    stream.imbue(std::locale::classic());
    ElevationPoint point;
    stream >> point.x;
    if (!stream || stream.eof()) {
        return std::nullopt;
    }
    if (separator != ' ') {
        int read = 0;
        char character = static_cast<char>(separator + 1);
        while (character != separator && read < 100 && stream.get(character)) {
            ++read;
        }
        if (character != separator) {
            return std::nullopt;
        }
    }
    stream >> point.y;
    if (!stream || stream.eof()) {
        return std::nullopt;
    }
    return point;
}

std::string describe(const Point& point) {
    return point ? std::to_string(std::bit_cast<std::uint64_t>(point->x)) + " " +
                       std::to_string(std::bit_cast<std::uint64_t>(point->y))
                 : "no record";
}

TEST(Record, IsReadByItsSeparator) {
    struct Case {
        std::string line;
        char separator;
        std::optional<double> x;
        double y = 2.5;
    };
    const std::string filler(98, '-');
    const std::vector<Case> cases{
        {"1.5;2.5;3.5", ';', 1.5},
        {"1.5;2.5", ';', {}},
        {"1.5;2.5 ", ';', 1.5},
        {" 1.5 ; 2.5 ;3", ';', 1.5},
        {"1,5;2,5;3,5", ';', 1, 2},
        {"a;2.5;3", ';', {}},
        {"", ';', {}},
        {"1.5 " + filler + ";2.5;3", ';', 1.5},
        {"1.5 " + filler + "-;2.5;3", ';', {}},
        {"1.5 2.5 3.5", ' ', 1.5},
        {"1.5\t2.5\t3.5", ' ', 1.5},
        {"1.5   2.5   3.5", ' ', 1.5},
        {"1.5\t2.5\t3.5", '\t', 1.5},
        {"1.5,2.5,3.5", ',', 1.5},
        {"1.5;2.5;3.5", '\n', {}},
        {"1.5-2.5-3", '-', 1.5},
        {"1.5-2.5 3", ' ', 1.5, -2.5},
        {"152.593.5", '9', {}}, // the number takes the digit that would have been the separator
    };
    for (const Case& each : cases) {
        const Point point = parse(each.line, each.separator);
        ASSERT_EQ(point.has_value(), each.x.has_value()) << each.line;
        if (point) {
            EXPECT_EQ(point->x, *each.x) << each.line;
            EXPECT_EQ(point->y, each.y) << each.line;
        }
    }
}

TEST(Record, MayBeginWithAnIdentifier) {
    EXPECT_EQ(describe(parse("17;1.5;2.5;3", ';', 'y')), describe(parse("1.5;2.5;3", ';')));
    EXPECT_EQ(describe(parse("17 1.5 2.5 3", ' ', 'y')), describe(parse("1.5;2.5;3", ';')));
    for (const char* line : {"a;1.5;2.5;3", "99999999999;1.5;2.5;3", "17;1.5;2.5", "17", ""}) {
        EXPECT_FALSE(parse(line, ';', 'y')) << line;
    }
    EXPECT_FALSE(parse("a 1.5 2.5 3", ' ', 'y'));
}

/// Lines near the grammar of a record: plausible numbers, broken ones, and everything between.
class LineGenerator {
public:
    explicit LineGenerator(unsigned seed) : random_(seed) {}

    std::string operator()(char separator) {
        std::string line = number();
        line += gap(separator);
        line += number();
        if (random_() % 8 != 0) {
            line += gap(separator);
            line += number();
        }
        if (random_() % 16 == 0) {
            mutate(line);
        }
        return line;
    }

private:
    std::string digits(unsigned most) {
        std::string text;
        for (auto n = random_() % (most + 1); n > 0; --n) {
            text += static_cast<char>('0' + random_() % 10);
        }
        return text;
    }

    std::string number() {
        static const std::vector<std::string> odd{"1e",
                                                  "1e+",
                                                  "0x10",
                                                  "inf",
                                                  "nan",
                                                  "1e999",
                                                  "-1e999",
                                                  "1e-999",
                                                  ".5",
                                                  "5.",
                                                  "+3",
                                                  ".",
                                                  "-",
                                                  "+-1",
                                                  "--1",
                                                  "1e5x",
                                                  "1.2.3",
                                                  "1e5.5",
                                                  "",
                                                  "e5",
                                                  "-0",
                                                  "-.0",
                                                  "0e0",
                                                  "4.9e-324",
                                                  "2e-324",
                                                  "1.7976931348623159e308",
                                                  "0.1e1",
                                                  "9007199254740993",
                                                  "9007199254740992.5",
                                                  "00000000000000000000001.5",
                                                  "1'000",
                                                  "1,5"};
        switch (random_() % 8) {
        case 0:
            return odd[random_() % odd.size()];
        case 1:
            return sign() + digits(25) + "." + digits(25);
        case 2:
            return sign() + digits(6) + "." + digits(18) + (random_() % 2 == 0 ? "e" : "E") +
                   sign() + digits(3);
        case 3:
            return sign() + digits(20);
        default:
            return sign() + digits(7) + "." + digits(4);
        }
    }

    std::string sign() {
        static const std::vector<std::string> signs{"", "", "", "-", "+"};
        return signs[random_() % signs.size()];
    }

    std::string gap(char separator) {
        static const std::vector<std::string> blanks{"", "", "", " ", "\t", "  ", "\v\f", "\r"};
        std::string text = blanks[random_() % blanks.size()];
        if (random_() % 64 == 0) {
            text += std::string(90 + random_() % 20, 'k');
        }
        if (random_() % 64 != 0) {
            text += separator;
        }
        return text + blanks[random_() % blanks.size()];
    }

    void mutate(std::string& line) {
        if (!line.empty()) {
            static const std::string characters("\0\x1A \t;,.eE+-0x9\xFF", 15);
            line[random_() % line.size()] = characters[random_() % characters.size()];
        }
    }

    std::mt19937 random_;
};

// A fast reading of records must not be told apart from the definition, not by a bit.
TEST(Record, AgreesWithTheStreamDefinition) {
    constexpr int lines = 1'000'000;
    const std::string separators("; ,\t|-e5.", 9);
    LineGenerator generate(20240229);
    for (int i = 0; i < lines; ++i) {
        // Characters that are part of numbers serve as separators too, though rarely.
        const char separator =
            separators[static_cast<std::size_t>(i % 16 == 0 ? i / 16 % 9 : i % 4)];
        const std::string line = generate(separator);
        ASSERT_EQ(describe(parse(line, separator)), describe(byDefinition(line, separator)))
            << "line " << i << ": [" << line << "] separated by [" << separator << "]";
    }
}

TEST(Record, DoesNotDependOnTheGlobalLocale) {
    struct Decimals : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Decimals));
    const std::string fast = describe(parse("1.5;2.5;3", ';'));
    const std::string slow = describe(parse("1.5000000000000000000000001;1,234;3", ';'));
    std::locale::global(before);
    EXPECT_EQ(fast, describe(ElevationPoint{1.5, 2.5}));
    EXPECT_EQ(slow, describe(ElevationPoint{1.5, 1.0}));
}

} // namespace
} // namespace veldtrim
