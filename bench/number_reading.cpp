// What it costs to read the two coordinates of a record, by several ways.

#include "elevation/record.h"
#include "records.h"
#include "text/number.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdlib>
#include <istream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace veldtrim;
using namespace veldtrim::bench;

/// Records to take turns with: enough that no branch predictor learns them by heart.
constexpr std::size_t recordCount = std::size_t{1} << 16U;

const std::vector<char>& records() {
    static const std::vector<char> all = [] {
        std::vector<char> text(recordCount * recordSize);
        RecordSource source;
        for (std::size_t i = 0; i < recordCount; ++i) {
            source.write(&text[i * recordSize]);
            text[(i + 1) * recordSize - 1] = '\0'; // strtod has no other end
        }
        return text;
    }();
    return all;
}

template <typename Read>
void readRecords(benchmark::State& state, Read read) {
    const std::vector<char>& text = records();
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
