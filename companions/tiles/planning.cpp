#include "tiles/planning.h"

#include "platform/posix/file_state.h"
#include "run/input_files.h"
#include "tiles/cutting.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <stdexcept>
#include <utility>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

namespace fs = boost::filesystem;

/// What a tile costs besides its bytes, in bytes that take as long to clip.
constexpr std::int64_t weightOfTile = 4096;

constexpr std::int64_t smallestUsualShard = std::int64_t{8} << 20;
constexpr std::int64_t largestUsualShard = std::int64_t{4} << 30;
constexpr std::int64_t usualShardsPerJob = 8;

/// On a cluster, to start a shard takes seconds, and centres ask for arrays of a few hundred tasks.
constexpr std::int64_t smallestClusterShard = std::int64_t{1} << 30;
constexpr std::int64_t mostUsualClusterShards = 800;

std::int64_t weight(const Piece& piece) {
    return piece.bytes() + weightOfTile;
}

std::int64_t sumOfBytes(const std::vector<Piece>& pieces) {
    std::int64_t sum = 0;
    for (const Piece& piece : pieces) {
        sum += piece.bytes();
    }
    return sum;
}

std::int64_t dividedUp(std::int64_t value, std::int64_t by) {
    return value / by + (value % by == 0 ? 0 : 1);
}

/// Returns the parts of a tile, or the tile itself.
std::vector<Piece> cut(const Piece& tile, const std::string& inputDirectory, std::int64_t size) {
    std::vector<Piece> parts;
    if (tile.size > size && tile.isReadable) {
        const std::string path = (fs::path(inputDirectory) / tile.name).string();
        Piece part = tile;
        for (const std::int64_t position : cutPositions(path, tile.size, size)) {
            part.end = position;
            parts.push_back(part);
            part.begin = position;
        }
        part.end = 0;
        parts.push_back(part);
        return parts;
    }
    return {tile};
}

} // namespace

std::vector<Piece> listTiles(const std::string& inputDirectory) {
    std::vector<Piece> tiles;
    visitFiles(inputDirectory, [&](const std::string& path) {
        if (!hasInputExtension(path)) {
            return;
        }
        const FileState state = fileState(path);
        Piece tile;
        tile.name = fs::path(path).filename().string();
        tile.size = state.isRegular ? state.size : 0;
        tile.modified = state.modified;
        tile.isReadable = isReadable(path);
        tiles.push_back(tile);
    });
    std::sort(tiles.begin(), tiles.end(),
              [](const Piece& a, const Piece& b) { return a.name < b.name; });
    return tiles;
}

Division divide(const std::vector<Piece>& tiles, const ShardSizes& sizes) {
    const std::int64_t all = sumOfBytes(tiles);
    Division division;
    if (sizes.shards > 0) {
        division = {std::max(dividedUp(all, sizes.shards), std::int64_t{1}), sizes.shards};
    } else if (sizes.bytes > 0) {
        division = {sizes.bytes, dividedUp(all, sizes.bytes)};
    } else {
        const auto weights = all + static_cast<std::int64_t>(tiles.size()) * weightOfTile;
        const std::int64_t size =
            sizes.jobs == 0
                ? std::max(dividedUp(weights, mostUsualClusterShards), smallestClusterShard)
                : std::clamp(weights / (usualShardsPerJob * sizes.jobs), smallestUsualShard,
                             largestUsualShard);
        division = {size, dividedUp(weights, size)};
    }
    if (division.count > mostShards) {
        throw std::runtime_error(std::to_string(division.count) + " shards are more than " +
                                 std::to_string(mostShards) + ": choose larger ones");
    }
    return division;
}

std::vector<Shard> dealOut(const std::vector<Piece>& tiles, const std::string& inputDirectory,
                           Division division) {
    std::vector<Piece> pieces;
    for (const Piece& tile : tiles) {
        for (Piece& piece : cut(tile, inputDirectory, division.size)) {
            pieces.push_back(std::move(piece));
        }
    }
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const Piece& a, const Piece& b) { return weight(a) > weight(b); });

    const auto wanted = static_cast<std::size_t>(std::max(division.count, std::int64_t{1}));
    const std::size_t count = std::min(wanted, pieces.size());
    std::vector<Shard> shards(count);
    using Load = std::pair<std::int64_t, std::size_t>;
    std::priority_queue<Load, std::vector<Load>, std::greater<>> lightest;
    for (std::size_t i = 0; i < count; ++i) {
        lightest.emplace(0, i);
    }
    for (Piece& piece : pieces) {
        auto [load, index] = lightest.top();
        lightest.pop();
        lightest.emplace(load + weight(piece), index);
        shards[index].push_back(std::move(piece));
    }
    return shards;
}

} // namespace veldtrim
