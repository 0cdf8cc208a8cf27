#include "elevation/record_count.h"

#include "platform/file.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <utility>
#include <vector>

namespace veldtrim {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

} // namespace

std::int64_t countLineFeeds(const char* at, std::size_t size) {
    constexpr std::size_t lanes = 64;
    constexpr std::size_t most = std::numeric_limits<std::uint8_t>::max();
    // In an array of one-byte counters, so that compilers can vectorise the loop.
    std::int64_t total = 0;
    while (size >= lanes) {
        const std::size_t rows = std::min(size / lanes, most);
        std::array<std::uint8_t, lanes> counts{};
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                counts[lane] = static_cast<std::uint8_t>(counts[lane] + (at[lane] == '\n' ? 1 : 0));
            }
            at += lanes;
        }
        size -= rows * lanes;
        total = std::accumulate(counts.begin(), counts.end(), total);
    }
    return total + std::count(at, at + size, '\n');
}

std::int32_t toRecordCount(std::int64_t records, const std::string& path) {
    if (records > std::numeric_limits<std::int32_t>::max()) {
        throw std::length_error("too many records in " + path + ": " + std::to_string(records));
    }
    return static_cast<std::int32_t>(records);
}

std::int32_t countRecords(std::string path, std::error_code& openError) {
    PlatformFile file = PlatformFile::openForReading(path);
    openError = file.openError();
    std::vector<char> block(blockSize);
    std::int64_t lineFeeds = 0;
    while (const std::size_t got = file.read(block.data(), block.size())) {
        lineFeeds += countLineFeeds(block.data(), got);
    }
    return toRecordCount(lineFeeds - 1, path);
}

std::int32_t countRecords(std::string path) {
    std::error_code openError;
    return countRecords(std::move(path), openError);
}

} // namespace veldtrim
