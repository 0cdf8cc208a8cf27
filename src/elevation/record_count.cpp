#include "elevation/record_count.h"

#include "platform/file.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace veldtrim {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

} // namespace

std::int64_t countLineFeeds(const char* at, std::size_t size) {
    std::int64_t total = 0;
    while (size != 0) {
        // A counter of one byte for each piece, so that compilers can vectorise the loop.
        const std::size_t piece = std::min<std::size_t>(size, 240);
        std::uint8_t count = 0;
        for (std::size_t i = 0; i < piece; ++i) {
            count = static_cast<std::uint8_t>(count + (at[i] == '\n' ? 1 : 0));
        }
        total += count;
        at += piece;
        size -= piece;
    }
    return total;
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
