#include "elevation/record.h"
#include "judges/elevation_rules.h"
#include "judges/line_generator.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace veldtrim {
namespace {

using test::LineGenerator;

/// The bits of x and y; nothing where the line is no record.
using Bits = std::optional<std::pair<std::uint64_t, std::uint64_t>>;

template <typename Parse>
Bits bits(Parse parse, std::string_view line, char format, char separator) {
    ElevationPoint point;
    if (!parse(std::string(line), format, separator, point)) {
        return {};
    }
    return {{std::bit_cast<std::uint64_t>(point.x), std::bit_cast<std::uint64_t>(point.y)}};
}

/// parseRecord for a line that others follow.
bool parseFirst(const std::string& line, char format, char separator, ElevationPoint& point) {
    const bool returns = line.size() % 2 == 0 || line.ends_with('\r');
    const std::string lines = line + (returns ? "\r\n" : "\n") + "12345.678;9;\n";
    Line first;
    const RecordFault fault = readFirstRecord(lines, {format, separator, 0}, point, first);
    EXPECT_EQ(first.text, line);
    EXPECT_EQ(first.raw.size(), line.size() + (returns ? 2 : 1));
    return fault == RecordFault::None;
}

// A fast reading of records must not be told apart from the definition, not by a bit.
TEST(Record, AgreesWithTheStreamDefinition) {
    const std::string separators("; ,\t|-e5.", 9);
    LineGenerator generator(20240229);
    for (std::size_t i = 0; i < 1'000'000; ++i) {
        // Characters that are part of numbers serve as separators too, though rarely.
        const char separator = separators[i % 16 == 0 ? i / 16 % 9 : i % 4];
        const char format = i % 8 == 7 ? 'y' : 'x';
        const std::string line = generator.oddities(separator);
        const Bits expected = bits(fuzz::extractRecord, line, format, separator);
        ASSERT_EQ(bits(parseRecord, line, format, separator), expected)
            << "line " << i << ": [" << line << "] separated by [" << separator << "]";
        ASSERT_EQ(bits(parseFirst, line, format, separator), expected)
            << "line " << i << ": [" << line << "] before others";
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
        const Bits point = bits(parseFirst, generator.numbers(), 'x', ';');
        addToHash(point ? 1 : 0);
        if (point) {
            addToHash(point->first);
            addToHash(point->second);
        }
    }
    EXPECT_EQ(hash, 0xAC1485E29E3E474BU);
}

// A line's end is looked for behind y. Nothing before it may be taken for x, y or what follows
// them.
TEST(Record, EndsWithItsLine) {
    const std::string separators("; \t\r\n-5", 7);
    for (const char* const line :
         {"", "5", "5;", "5 ", "5;6", "5;-", "5;6.", "1234567.8", "1234567.8;12345678.9", "k",
          "5;;", "-", "5\r", "5;\r", "5;6\r", "5\t", "5;6;"}) {
        for (const char separator : separators) {
            EXPECT_EQ(bits(parseFirst, line, 'x', separator),
                      bits(fuzz::extractRecord, line, 'x', separator))
                << line << " separated by " << static_cast<int>(separator);
        }
    }
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
    for (const Case& c :
         {Case{" 1.5 ; 2.5 ", None, 10}, Case{"1 2 ", None, 3, ' '},
          Case{"1" + far + ";2;", None, 102}, Case{"", NoX, 0}, Case{" 1", NothingAfterX, 2},
          Case{"1 2 ", NoSeparatorAfterX, 1}, Case{"1k" + far + ";2;", NoSeparatorAfterX, 1},
          Case{"1;b;3", NoY, 2}, Case{"1,5 2", NoY, 1, ' '}, Case{"1;2", NothingAfterY, 3},
          Case{"17;1.5;2.5;3", None, 10, ';', 'y'}, Case{"a;1;2;3", NoIdentifier, 0, ';', 'y'},
          Case{"17", NoSeparatorAfterIdentifier, 2, ';', 'y'}, Case{"17;b;2;", NoX, 3, ';', 'y'}}) {
        ElevationPoint point;
        const RecordReading reading = readRecord(c.line, {c.format, c.separator, 0}, point);
        EXPECT_EQ(reading.fault, c.fault) << c.line;
        EXPECT_EQ(reading.place, c.place) << c.line;
    }
}

} // namespace
} // namespace veldtrim
