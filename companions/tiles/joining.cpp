#include "tiles/joining.h"

#include "platform/posix/file_state.h"
#include "tiles/cutting.h"

#include <iterator>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Returns the size of the joined file, whose first line is as long as that of each part.
std::int64_t joinedSize(const PartsOfTile& tile, std::int64_t header) {
    std::int64_t size = header;
    for (const auto& [begin, part] : tile.files) {
        size += part.size - header;
    }
    return size;
}

} // namespace

std::size_t joinParts(const PartsOfTile& tile, const std::string& unfinished,
                      const std::string& directory, const std::string& name) {
    const std::string target = directory + '/' + name;
    if (const FileState joined = fileState(target); joined.exists) {
        if (joined.size == joinedSize(tile, headerLength(target))) {
            return 0;
        }
        fs::remove(target);
    }
    const auto first = tile.files.begin();
    const std::string growing = unfinished + '/' + name;
    if (const FileState state = fileState(first->second.path); state.exists) {
        if (state.size != first->second.size) {
            return first->second.shard;
        }
        fs::rename(first->second.path, growing);
    }
    if (fileState(growing).size < first->second.size) {
        return first->second.shard;
    }
    std::int64_t size = first->second.size;
    for (auto each = std::next(first); each != tile.files.end(); ++each) {
        const ClippedPart& part = each->second;
        if (fileState(part.path).size != part.size) {
            return part.shard;
        }
        size = appendWithoutHeader(part.path, growing, size);
    }
    fs::rename(growing, target);
    return 0;
}

} // namespace veldtrim
