#include "elevation/record.h"
#include "judges/elevation_rules.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldtrim {
namespace {

/// The bits of x and y; nothing where the line is no record.
using Bits = std::optional<std::pair<std::uint64_t, std::uint64_t>>;

template <typename Parse>
Bits bits(Parse parse, std::string_view line, char format, char separator) {
    ElevationPoint point;
    return parse(std::string(line), format, separator, point)
               ? Bits(
                     {std::bit_cast<std::uint64_t>(point.x), std::bit_cast<std::uint64_t>(point.y)})
               : std::nullopt;
}

/// Lines near the grammar of a record. One draw a statement: the lines are the same with every
/// compiler.
class LineGenerator {
public:
    explicit LineGenerator(unsigned seed) : random_(seed) {}

    /// Two numbers of any size and length, most of them good ones.
    std::string numbers() {
        std::string line;
        appendNumber(line);
        line += ';';
        appendNumber(line);
        return line + ";0";
    }

    /// Plausible numbers, broken ones, and everything between, in odd distances.
    std::string oddities(char separator) {
        std::string line;
        appendAnyNumber(line);
        appendGap(line, separator);
        appendAnyNumber(line);
        if (draw(8) != 0) {
            appendGap(line, separator);
            appendAnyNumber(line);
        }
        if (draw(16) == 0 && !line.empty()) {
            const unsigned at = draw(static_cast<unsigned>(line.size()));
            line[at] = std::string("\0\x1A \t;,.eE+-0x9\xFF", 15)[draw(15)];
        }
        return line;
    }

private:
    unsigned draw(unsigned below) { return static_cast<unsigned>(random_() % below); }

    void appendDigits(std::string& line, unsigned count) {
        for (; count > 0; --count) {
            line += static_cast<char>('0' + draw(10));
        }
    }

    void appendNumber(std::string& line) {
        if (draw(3) == 0) {
            line += '-';
        }
        const unsigned kind = draw(8);
        appendDigits(line, kind < 4 ? draw(7) : draw(25));
        if (kind != 7) {
            line += '.';
            appendDigits(line, kind < 4 ? draw(4) : draw(25));
        }
        if (kind == 4 || kind == 5) {
            line += 'e';
            line += draw(2) == 0 ? '-' : '+';
            appendDigits(line, 1 + draw(3));
        }
        if (draw(16) == 0) {
            line += "abE+-.x ,"[draw(9)];
        }
    }

    void appendAnyNumber(std::string& line) {
        static const std::vector<std::string> odd{"1e",
                                                  "1e+",
                                                  "0x10",
                                                  "inf",
                                                  "nan",
                                                  "1e999",
                                                  "-1e999",
                                                  ".5",
                                                  "5.",
                                                  "+3",
                                                  ".",
                                                  "-",
                                                  "+-1",
                                                  "--1",
                                                  "1e5x",
                                                  "1.2.",
                                                  "1e5.5",
                                                  "",
                                                  "1e-999",
                                                  "-0",
                                                  "-.0",
                                                  "0e0",
                                                  "1E5",
                                                  "4.9e-324",
                                                  "2e-324",
                                                  "1.7976931348623159e308",
                                                  "1'0",
                                                  "1,5",
                                                  "+1e+2",
                                                  "e5",
                                                  "9007199254740993"};
        if (draw(8) == 0) {
            line += odd[draw(static_cast<unsigned>(odd.size()))];
        } else {
            appendNumber(line);
        }
    }

    void appendGap(std::string& line, char separator) {
        static const std::vector<std::string> blanks{"", "", "", " ", "\t", "  ", "\v\f", "\r"};
        line += blanks[draw(8)];
        if (draw(64) == 0) {
            line += std::string(90 + draw(20), 'k');
        }
        if (draw(64) != 0) {
            line += separator;
        }
        line += blanks[draw(8)];
    }

    std::mt19937 random_;
};

// A fast reading of records must not be told apart from the definition, not by a bit.
TEST(Record, AgreesWithTheStreamDefinition) {
    const std::string separators("; ,\t|-e5.", 9);
    LineGenerator generator(20240229);
    for (std::size_t i = 0; i < 1'000'000; ++i) {
        // Characters that are part of numbers serve as separators too, though rarely.
        const char separator = separators[i % 16 == 0 ? i / 16 % 9 : i % 4];
        const char format = i % 8 == 7 ? 'y' : 'x';
        const std::string line = generator.oddities(separator);
        ASSERT_EQ(bits(parseRecord, line, format, separator),
                  bits(fuzz::extractRecord, line, format, separator))
            << "line " << i << ": [" << line << "] separated by [" << separator << "]";
    }
}

// The verdicts and the bits of a million lines are the same on every platform and with every
// compiler: a file clipped here is the file clipped there.
TEST(Record, BitsAreTheSameOnEveryPlatform) {
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a, 64 bits
    const auto addToHash = [&](std::uint64_t value) {
        for (int shift = 0; shift < 64; shift += 8) {
            hash = (hash ^ ((value >> shift) & 0xFF)) * 0x100000001B3;
        }
    };
    LineGenerator generator(1954);
    for (int i = 0; i < 1'000'000; ++i) {
        const Bits point = bits(parseRecord, generator.numbers(), 'x', ';');
        addToHash(point ? 1 : 0);
        if (point) {
            addToHash(point->first);
            addToHash(point->second);
        }
    }
    EXPECT_EQ(hash, 0xAC1485E29E3E474BU);
}

TEST(Record, SaysWhereAndWhyALineIsNone) {
    using enum RecordFault;
    struct Case {
        std::string line;
        RecordFault fault;
        std::size_t place;
        char separator = ';';
        char format = 'x';
    };
    const std::string far(99, 'k');
    for (const Case& c : {Case{"1.5;2.5;3", None, 7},
                          Case{" 1.5 ; 2.5 ", None, 10},
                          Case{"1,5 ;2,5", None, 6},
                          Case{"1 2 ", None, 3, ' '},
                          Case{"1" + far + ";2;", None, 102},
                          Case{"", NoX, 0},
                          Case{"a;2;3", NoX, 0},
                          Case{"1e999;2;3", NoX, 0},
                          Case{" 1", NothingAfterX, 2},
                          Case{"1 2 ", NoSeparatorAfterX, 1},
                          Case{"1k" + far + ";2;", NoSeparatorAfterX, 1},
                          Case{"1;b;3", NoY, 2},
                          Case{"1,5 2", NoY, 1, ' '},
                          Case{"1;", NoY, 2},
                          Case{"1;2", NothingAfterY, 3},
                          Case{"17;1.5;2.5;3", None, 10, ';', 'y'},
                          Case{"17 1.5 2.5 3", None, 10, ' ', 'y'},
                          Case{"a;1;2;3", NoIdentifier, 0, ';', 'y'},
                          Case{"99999999999;1;2;", NoIdentifier, 0, ';', 'y'},
                          Case{"17", NoSeparatorAfterIdentifier, 2, ';', 'y'},
                          Case{"17;b;2;", NoX, 3, ';', 'y'},
                          Case{"17;1;2", NothingAfterY, 6, ';', 'y'}}) {
        ElevationPoint point;
        const RecordReading reading = readRecord(c.line, {c.format, c.separator, 0}, point);
        EXPECT_EQ(reading.fault, c.fault) << c.line;
        EXPECT_EQ(reading.place, c.place) << c.line;
    }
}

} // namespace
} // namespace veldtrim
