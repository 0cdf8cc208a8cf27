#include "tiles/cutting.h"

#include "elevation/record_count.h"
#include "platform/file.h"
#include "run/input_files.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <system_error>

namespace veldtrim {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

PlatformFile openExisting(const std::string& path) {
    PlatformFile file = PlatformFile::openForReading(path);
    if (const std::error_code reason = file.openError()) {
        throw std::system_error(reason, "cannot read " + path);
    }
    return file;
}

/// Reads the bytes from `begin` to `end`, or to the end of the file, and passes them on in blocks.
/// Ends early if `use` returns false.
void readBlocks(PlatformFile& file, std::int64_t begin, std::int64_t end,
                const std::function<bool(std::string_view block)>& use) {
    file.moveTo(begin);
    std::vector<char> block(blockSize);
    while (begin < end) {
        const auto wanted = std::min(static_cast<std::int64_t>(blockSize), end - begin);
        const std::size_t got = file.read(block.data(), static_cast<std::size_t>(wanted));
        if (got == 0 || !use({block.data(), got})) {
            return;
        }
        begin += static_cast<std::int64_t>(got);
    }
}

constexpr std::int64_t toTheEnd = std::numeric_limits<std::int64_t>::max();

/// Returns the position after the first line feed at `begin` or later, or 0 if there is none.
std::int64_t afterLineFeed(PlatformFile& file, std::int64_t begin) {
    std::int64_t position = begin;
    bool found = false;
    readBlocks(file, begin, toTheEnd, [&](std::string_view block) {
        const std::size_t index = block.find('\n');
        found = index != std::string_view::npos;
        position += static_cast<std::int64_t>(found ? index + 1 : block.size());
        return !found;
    });
    return found ? position : 0;
}

} // namespace

std::vector<std::int64_t> cutPositions(const std::string& path, std::int64_t size,
                                       std::int64_t partSize) {
    std::vector<std::int64_t> positions;
    if (!reasonToSkip(path).empty()) {
        return positions;
    }
    PlatformFile file = openExisting(path);
    // A header line that fills a part would be copied to the front of each.
    const std::int64_t header = afterLineFeed(file, 0);
    if (header == 0 || header > std::max(partSize, static_cast<std::int64_t>(blockSize))) {
        return positions;
    }
    // Parts of the same size: small ends of many tiles would be many files in one shard.
    const std::int64_t parts = std::max((size - 1) / partSize + 1, std::int64_t{1});
    const std::int64_t evenSize = (size - 1) / parts + 1;
    std::int64_t last = header;
    for (std::int64_t target = evenSize; target < size; target += evenSize) {
        if (target <= last) {
            continue;
        }
        const std::int64_t position = afterLineFeed(file, target - 1);
        if (position == 0 || position >= size) {
            break;
        }
        positions.push_back(position);
        last = position;
    }
    return positions;
}

std::int64_t copyPart(const std::string& from, std::int64_t begin, std::int64_t end,
                      const std::string& to) {
    PlatformFile source = openExisting(from);
    PlatformFile target = PlatformFile::openForWriting(to);
    if (const std::error_code reason = target.openError()) {
        throw std::system_error(reason, "cannot write " + to);
    }
    std::int64_t lineFeeds = 0;
    const auto copy = [&](std::string_view block) {
        lineFeeds += countLineFeeds(block.data(), block.size());
        target.write(block);
        return true;
    };
    if (begin != 0) {
        readBlocks(source, 0, headerLength(from), copy);
    }
    readBlocks(source, begin, end == 0 ? toTheEnd : end, copy);
    target.close();
    return lineFeeds - 1;
}

std::int64_t appendWithoutHeader(const std::string& from, const std::string& to,
                                 std::int64_t size) {
    const std::int64_t header = headerLength(from);
    PlatformFile source = openExisting(from);
    PlatformFile target = PlatformFile::openToContinue(to, size);
    if (const std::error_code reason = target.openError()) {
        throw std::system_error(reason, "cannot write " + to);
    }
    readBlocks(source, header, toTheEnd, [&](std::string_view block) {
        target.write(block);
        size += static_cast<std::int64_t>(block.size());
        return true;
    });
    target.close();
    return size;
}

std::int64_t headerLength(const std::string& path) {
    PlatformFile file = openExisting(path);
    return afterLineFeed(file, 0);
}

} // namespace veldtrim
