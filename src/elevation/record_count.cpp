#include "elevation/record_count.h"

#include "elevation/platform_file.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

namespace veldtrim {

namespace {
constexpr std::size_t blockSize = std::size_t{256} << 10;
} // namespace

std::int32_t countRecords(std::string path) {
    PlatformFile file = PlatformFile::openForReading(path);
    std::vector<char> block(blockSize);
    std::int64_t lineFeeds = 0;
    while (const std::size_t got = file.read(block.data(), block.size())) {
        lineFeeds += std::count(block.data(), block.data() + got, '\n');
    }
    const std::int64_t records = lineFeeds - 1;
    if (records > std::numeric_limits<std::int32_t>::max()) {
        throw std::length_error("too many records in " + path + ": " + std::to_string(records));
    }
    return static_cast<std::int32_t>(records);
}

} // namespace veldtrim
