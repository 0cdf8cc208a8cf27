#include "records.h"

#include "shapes.h"

namespace veldtrim::bench {

namespace {

/// Writes a number of hundredths with `size` characters, the point among them, and then `end`.
char* writeHundredths(char* to, std::size_t size, std::uint64_t hundredths, char end) {
    for (std::size_t i = size; i-- > 0;) {
        if (i + 3 == size) {
            to[i] = '.';
        } else {
            to[i] = static_cast<char>('0' + hundredths % 10);
            hundredths /= 10;
        }
    }
    to[size] = end;
    return to + size + 1;
}

} // namespace

ElevationPoint RecordSource::write(char* to) {
    constexpr auto west = static_cast<std::uint64_t>(areaWest) * 100;
    constexpr auto south = static_cast<std::uint64_t>(areaSouth) * 100;
    constexpr auto side = static_cast<std::uint64_t>(areaSide) * 100;
    const std::uint64_t x = west + random_.below(side + 1);
    const std::uint64_t y = south + random_.below(side + 1);
    to = writeHundredths(to, 9, x, ';');
    to = writeHundredths(to, 10, y, ';');
    writeHundredths(to, 5, 1000 + random_.below(9000), '\n');
    return {static_cast<double>(x) / 100.0, static_cast<double>(y) / 100.0};
}

} // namespace veldtrim::bench
