#include "elevation/record.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <string>

namespace veldtrim {
namespace {

/// Lines of numbers of all sizes and lengths. One draw a statement: the lines are the same with
/// every compiler.
class NumberLines {
public:
    std::string next() {
        std::string line;
        appendNumber(line);
        line += ';';
        appendNumber(line);
        line += ";0";
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
            static const std::string tails("abE+-.x ,");
            line += tails[draw(static_cast<unsigned>(tails.size()))];
        }
    }

    std::mt19937 random_{1954};
};

/// FNV-1a, 64 bits, of the eight bytes of a value.
void addToHash(std::uint64_t& hash, std::uint64_t value) {
    for (int shift = 0; shift < 64; shift += 8) {
        hash = (hash ^ ((value >> shift) & 0xFF)) * 0x100000001B3;
    }
}

// The verdicts and the bits of a million lines are the same on every platform and with every
// compiler: a file clipped here is the file clipped there.
TEST(RecordBits, AreTheSameOnEveryPlatform) {
    constexpr int lines = 1'000'000;
    NumberLines generator;
    std::uint64_t hash = 0xCBF29CE484222325;
    int records = 0;
    for (int i = 0; i < lines; ++i) {
        const std::string line = generator.next();
        ElevationPoint point;
        const bool isRecord = parseRecord(line, 'x', ';', point);
        addToHash(hash, isRecord ? 1 : 0);
        if (isRecord) {
            addToHash(hash, std::bit_cast<std::uint64_t>(point.x));
            addToHash(hash, std::bit_cast<std::uint64_t>(point.y));
            ++records;
        }
    }
    EXPECT_EQ(records, 887'965);
    EXPECT_EQ(hash, 0xAC1485E29E3E474BU);
}

} // namespace
} // namespace veldtrim
