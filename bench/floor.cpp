// The least that clipping with one write per kept line can cost. Deliberately a program of its own
// that shares no code with Veldtrim, so that the one can be measured against the other: it counts
// the line feeds, cuts the file into lines, reads two numbers, compares them with a square, and
// writes each line that it keeps with one write. With --buffered it collects the kept lines in one
// large buffer instead, which shows what is not the writes. A line feed ends every block that it
// works on, so no loop tests for another end, and no character of a line is read twice.
//
// It takes for granted what Veldtrim must not: plain decimal numbers, one character between them, a
// line feed at the end of every line, lines shorter than a block, and a disk that never fails.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10U;

struct Square {
    double west;
    double south;
    double east;
    double north;
};

/// Where the kept lines go.
class Output {
public:
    Output(const char* path, bool buffered)
        : descriptor_(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
        if (buffered) {
            buffer_.reserve(largeBuffer);
        }
    }

    void write(const char* line, std::size_t size) {
        if (buffer_.capacity() == 0) {
            send(line, size);
            return;
        }
        if (buffer_.size() + size > largeBuffer) {
            flush();
        }
        buffer_.insert(buffer_.end(), line, line + size);
    }

    void flush() {
        send(buffer_.data(), buffer_.size());
        buffer_.clear();
    }

private:
    static constexpr std::size_t largeBuffer = std::size_t{1} << 20U;

    void send(const char* bytes, std::size_t size) const {
        if (size != 0 && ::write(descriptor_, bytes, size) != static_cast<ssize_t>(size)) {
            std::perror("floor: write");
            std::exit(1);
        }
    }

    int descriptor_;
    std::vector<char> buffer_;
};

/// Reads the number at `at`, which ends at the first character that is neither a digit nor a point.
double readNumber(const char*& at) {
    constexpr std::array<double, 16> powersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                    1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* const begin = at;
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    const char* const first = at;
    std::int64_t digits = 0;
    const auto readDigits = [&] {
        for (unsigned digit = 0; (digit = static_cast<unsigned char>(*at - '0')) < 10; ++at) {
            digits = digits * 10 + digit;
        }
    };
    readDigits();
    std::size_t decimals = 0;
    if (*at == '.') {
        const char* const fraction = ++at;
        readDigits();
        decimals = static_cast<std::size_t>(at - fraction);
    }
    constexpr std::ptrdiff_t exactDigits = 16; // 15 and the point
    double value = 0.0;
    if (at - first > exactDigits) {
        std::from_chars(begin, at, value);
        return value;
    }
    value = static_cast<double>(digits) / powersOfTen[decimals];
    return negative ? -value : value;
}

/// Whether the square holds the point of the line at `at`, which moves behind y.
bool keeps(const Square& square, const char*& at) {
    const double x = readNumber(at);
    ++at; // the separator
    const double y = readNumber(at);
    return x >= square.west && x <= square.east && y >= square.south && y <= square.north;
}

const char* endOfLine(const char* at, const char* stop) {
    return static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(stop - at))) + 1;
}

/// Calls visit(begin, end) for each block of whole lines.
template <typename Visit>
void forEachBlock(const char* path, Visit visit) {
    const int input = ::open(path, O_RDONLY | O_CLOEXEC);
    std::vector<char> block(blockSize);
    std::size_t held = 0; // bytes of a line that the block before began
    for (ssize_t got = 0; (got = ::read(input, block.data() + held, block.size() - held)) > 0;) {
        const std::string_view bytes(block.data(), held + static_cast<std::size_t>(got));
        const std::size_t whole = bytes.rfind('\n') + 1;
        visit(bytes.data(), bytes.data() + whole);
        held = bytes.size() - whole;
        std::memmove(block.data(), block.data() + whole, held);
    }
    ::close(input);
}

std::int64_t countLineFeeds(const char* path) {
    std::int64_t count = 0;
    forEachBlock(path, [&](const char* at, const char* stop) {
        while (at != stop) {
            // A counter of one byte for a short piece, so that compilers can vectorise the loop.
            const char* const end = at + std::min<std::ptrdiff_t>(stop - at, 255);
            count += std::accumulate(at, end, std::uint8_t{0}, [](std::uint8_t sum, char c) {
                return static_cast<std::uint8_t>(sum + (c == '\n' ? 1 : 0));
            });
            at = end;
        }
    });
    return count;
}

/// Copies the header line and the lines whose points the square holds; returns the number of these.
std::int64_t clip(const char* path, Output& output, const Square& square) {
    std::int64_t kept = -1; // the header
    forEachBlock(path, [&](const char* line, const char* const stop) {
        while (line != stop) {
            const char* at = line;
            const bool keep = kept < 0 || keeps(square, at);
            const char* const end = endOfLine(at, stop);
            if (keep) {
                output.write(line, static_cast<std::size_t>(end - line));
                ++kept;
            }
            line = end;
        }
    });
    return kept;
}

} // namespace

int main(int argc, char* argv[]) {
    const bool buffered = argc > 1 && std::string_view(argv[1]) == "--buffered";
    char** const arguments = argv + (buffered ? 2 : 1);
    if (argc - (buffered ? 2 : 1) != 6) {
        std::fputs("Usage: floor [--buffered] INPUT OUTPUT WEST SOUTH EAST NORTH\n", stderr);
        return 2;
    }
    const Square square{std::atof(arguments[2]), std::atof(arguments[3]), std::atof(arguments[4]),
                        std::atof(arguments[5])};
    const std::int64_t records = countLineFeeds(arguments[0]) - 1;
    Output output(arguments[1], buffered);
    const std::int64_t kept = clip(arguments[0], output, square);
    output.flush();
    std::printf("%lld of %lld\n", static_cast<long long>(kept), static_cast<long long>(records));
    return 0;
}
