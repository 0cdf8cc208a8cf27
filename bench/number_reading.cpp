// What it costs to read the two coordinates of a record, by several ways.

#include "data.h"
#include "elevation/record.h"
#include "text/number.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <istream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace {

using namespace veldtrim;
using namespace veldtrim::bench;

/// Records to take turns with: enough that no branch predictor learns them by heart.
constexpr std::size_t recordCount = std::size_t{1} << 16U;

/// The records, each ended by a NUL: strtod knows no other end.
const std::string& records() {
    static const std::string all = [] {
        std::string text = readRecords(recordCount);
        std::replace(text.begin(), text.end(), '\n', '\0');
        return text;
    }();
    return all;
}

template <typename Read>
void readRecords(benchmark::State& state, Read read) {
    const std::string& text = records();
    std::size_t next = 0;
    for (auto unused : state) {
        static_cast<void>(unused);
        const char* const line = &text[next * recordSize];
        next = (next + 1) % recordCount;
        ElevationPoint point;
        read(line, line + recordSize - 1, point);
        benchmark::DoNotOptimize(point);
    }
}

void parseRecords(benchmark::State& state) {
    readRecords(state, [](const char* line, const char* end, ElevationPoint& point) {
        benchmark::DoNotOptimize(
            parseRecord({line, static_cast<std::size_t>(end - line)}, 'x', ';', point));
    });
}
BENCHMARK(parseRecords)->Name("numbers/parseRecord");

void readNumbers(benchmark::State& state) {
    readRecords(state, [](const char* line, const char* end, ElevationPoint& point) {
        benchmark::DoNotOptimize(readNumber(line, end, point.x));
        ++line;
        benchmark::DoNotOptimize(readNumber(line, end, point.y));
    });
}
BENCHMARK(readNumbers)->Name("numbers/readNumber");

void fromChars(benchmark::State& state) {
    readRecords(state, [](const char* line, const char* end, ElevationPoint& point) {
        line = std::from_chars(line, end, point.x).ptr + 1;
        std::from_chars(line, end, point.y);
    });
}
BENCHMARK(fromChars)->Name("numbers/from_chars");

void stringToDouble(benchmark::State& state) {
    readRecords(state, [](const char* line, const char*, ElevationPoint& point) {
        char* stop = nullptr;
        point.x = std::strtod(line, &stop);
        point.y = std::strtod(stop + 1, &stop);
    });
}
BENCHMARK(stringToDouble)->Name("numbers/strtod");

void extractFromStream(benchmark::State& state) {
    readRecords(state, [](const char* line, const char* end, ElevationPoint& point) {
        std::istringstream fields(std::string(line, end));
        fields.imbue(std::locale::classic());
        fields >> point.x;
        fields.get();
        fields >> point.y;
    });
}
BENCHMARK(extractFromStream)->Name("numbers/stream");

} // namespace

BENCHMARK_MAIN();
