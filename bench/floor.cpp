// The least that clipping with one write per kept line can cost. Deliberately a program of its own
// that shares no code with Veldtrim, so that the one can be measured against the other: it counts
// the line feeds, cuts the file into lines, reads two numbers, compares them with a square, and
// writes each line that it keeps with one write. With --buffered it collects the kept lines in one
// large buffer instead, which shows what is not the writes.
//
// It takes for granted what Veldtrim must not: plain decimal numbers, ";" between them, a line feed
// at the end of every line, and a disk that never fails.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

double readNumber(const char*& at, const char* end) {
    constexpr std::array<double, 17> powersOfTen = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
    const char* now = at;
    const bool negative = now != end && *now == '-';
    now += negative ? 1 : 0;
    const char* const first = now;
    std::uint64_t digits = 0;
    const auto readDigits = [&] {
        while (now != end && static_cast<unsigned char>(*now - '0') < 10) {
            digits = digits * 10 + static_cast<std::uint64_t>(*now++ - '0');
        }
    };
    readDigits();
    std::size_t decimals = 0;
    if (now != end && *now == '.') {
        const char* const fraction = ++now;
        readDigits();
        decimals = static_cast<std::size_t>(now - fraction);
    }
    constexpr std::ptrdiff_t exactDigits = 16; // 15 and the point
    double value = 0.0;
    if (now - first <= exactDigits) {
        value = static_cast<double>(digits) / powersOfTen[decimals];
        value = negative ? -value : value;
    } else {
        now = std::from_chars(at, end, value).ptr;
    }
    at = now;
    return value;
}

bool keeps(const Square& square, const char* line, const char* end) {
    const double x = readNumber(line, end);
    ++line; // the separator
    const double y = readNumber(line, end);
    return x >= square.west && x <= square.east && y >= square.south && y <= square.north;
}

std::int64_t countLineFeeds(const char* path) {
    const int input = ::open(path, O_RDONLY | O_CLOEXEC);
    std::vector<char> block(blockSize);
    std::int64_t count = 0;
    for (ssize_t got = 0; (got = ::read(input, block.data(), block.size())) > 0;) {
        count += std::count(block.data(), block.data() + got, '\n');
    }
    ::close(input);
    return count;
}

/// Copies the header line and the lines whose points the square holds; returns the number of these.
std::int64_t clip(const char* path, Output& output, const Square& square) {
    const int input = ::open(path, O_RDONLY | O_CLOEXEC);
    std::vector<char> block(blockSize);
    std::size_t held = 0; // bytes of a line that the block before began
    std::int64_t kept = 0;
    bool isHeader = true;
    for (ssize_t got = 0; (got = ::read(input, block.data() + held, block.size() - held)) > 0;) {
        const char* line = block.data();
        const char* const stop = line + held + got;
        for (;;) {
            const void* const found =
                std::memchr(line, '\n', static_cast<std::size_t>(stop - line));
            if (found == nullptr) {
                break;
            }
            const char* const end = static_cast<const char*>(found);
            if (isHeader || keeps(square, line, end)) {
                output.write(line, static_cast<std::size_t>(end + 1 - line));
                kept += isHeader ? 0 : 1;
                isHeader = false;
            }
            line = end + 1;
        }
        held = static_cast<std::size_t>(stop - line);
        std::memmove(block.data(), line, held);
    }
    ::close(input);
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
