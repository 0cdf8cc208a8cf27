// Compares the reading of records with the plain definition on many random lines, each of which
// ends with the last byte of a page that nothing readable follows.
//
//   record_check [lines [seed]]
//
// Prints the lines compared and how many of them were records; exit code 1 if there were
// differences, which it prints.

#include "elevation/record.h"
#include "judges/elevation_rules.h"
#include "judges/line_generator.h"
#include "judges/stream_numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using veldtrim::ElevationPoint;
using veldtrim::Line;
using veldtrim::RecordFault;
using veldtrim::fuzz::sameBits;

constexpr long long usualLines = 100'000'000;

/// A page before one that cannot be read.
class GuardedPage {
public:
    GuardedPage() : size_(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE))) {
        void* const pages =
            ::mmap(nullptr, 2 * size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED) {
            std::abort();
        }
        end_ = static_cast<char*>(pages) + size_;
        ::mprotect(end_, size_, PROT_NONE);
    }

    /// Copies the text, of which only the last page counts, to the end of the page.
    std::string_view put(std::string_view text) {
        text.remove_prefix(text.size() - std::min(text.size(), size_));
        return {static_cast<char*>(std::memcpy(end_ - text.size(), text.data(), text.size())),
                text.size()};
    }

private:
    std::size_t size_;
    char* end_ = nullptr;
};

struct Reading {
    bool isRecord = false;
    ElevationPoint point;

    bool operator==(const Reading& other) const {
        return isRecord == other.isRecord && (!isRecord || (sameBits(point.x, other.point.x) &&
                                                            sameBits(point.y, other.point.y)));
    }
};

/// Whether the line is read as defined, alone, and as a line before `next`.
bool isReadAsDefined(GuardedPage& page, const std::string& line, const std::string& next,
                     char separator, long long& records) {
    Reading defined{};
    defined.isRecord = veldtrim::fuzz::extractRecord(line, 'x', separator, defined.point);
    records += defined.isRecord ? 1 : 0;

    Reading alone{};
    alone.isRecord = veldtrim::parseRecord(page.put(line), 'x', separator, alone.point);

    Reading first{};
    Line found;
    const std::string end = line.size() % 2 == 0 || line.ends_with('\r') ? "\r\n" : "\n";
    const std::string_view lines = page.put(line + end + next);
    first.isRecord = veldtrim::readFirstRecord(lines, {'x', separator, 0}, first.point, found) ==
                     RecordFault::None;
    return alone == defined && first == defined && found.text == line &&
           found.raw.size() == line.size() + end.size();
}

} // namespace

int main(int argc, char* argv[]) {
    const long long wanted = argc > 1 ? std::strtoll(argv[1], nullptr, 10) : usualLines;
    const auto seed = argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : 1U;
    const std::string separators("; ,\t|-e5.\r\n", 11);
    veldtrim::test::LineGenerator generator(seed);
    GuardedPage page;
    long long records = 0;
    long long differences = 0;
    for (long long i = 0; i < wanted; ++i) {
        const char separator = separators[generator.draw(i % 16 == 0 ? 11 : 4)];
        // A header that names no separator leaves a line feed, which no line contains.
        const char between = separator == '\n' ? ';' : separator;
        std::string line = i % 4 == 0   ? generator.oddities(between)
                           : i % 4 == 1 ? generator.numbers()
                                        : generator.usual(between, generator.draw(13));
        line.resize(generator.draw(4) == 0 ? generator.draw(static_cast<unsigned>(line.size()) + 1)
                                           : line.size());
        const char* const next = i % 3 == 0   ? ""
                                 : i % 3 == 1 ? "1;2;3\n"
                                              : ";1234567.8;123456.78;\n";
        if (!isReadAsDefined(page, line, next, separator, records) && ++differences <= 10) {
            std::printf("line %lld of seed %u: [%s] separated by character %d\n", i, seed,
                        line.c_str(), separator);
        }
    }
    std::printf("%lld lines, %lld records, %lld differences\n", wanted, records, differences);
    return differences == 0 ? 0 : 1;
}
