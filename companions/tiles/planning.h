/// Makes the plan of a run: lists the tiles and deals them out.
#pragma once

#include "tiles/plan.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// How large shards are to be.
struct ShardSizes {
    std::int64_t shards = 0; ///< number of shards, or 0
    std::int64_t bytes = 0;  ///< bytes of a shard, or 0
    int jobs = 1; ///< how many shards are clipped at once, or 0 for a cluster; if neither is given
};

/// The most shards of a plan.
inline constexpr std::int64_t mostShards = 100'000;

/// Returns what a run over the directory may read: everything in it that has an accepted name,
/// sorted by name. Whether the header of a file is accepted is left to the clipping. Throws
/// boost::filesystem::filesystem_error if the directory cannot be listed.
std::vector<Piece> listTiles(const std::string& inputDirectory);

/// How a run is divided.
struct Division {
    std::int64_t size = 1;  ///< a tile with more bytes is cut into parts of about this size
    std::int64_t count = 1; ///< number of shards, if there are as many pieces
};

/// Returns how to divide a run over the tiles. If neither size nor number is given, a shard takes
/// some minutes at most, and every job gets several shards; a cluster gets some hundred shards at
/// most, which take longer if need be. Throws std::runtime_error if there
/// would be more than `mostShards` shards.
Division divide(const std::vector<Piece>& tiles, const ShardSizes& sizes);

/// Cuts large tiles into parts and deals all out, the heaviest first, each to the shard that is
/// lightest at that moment. Returns the shards, none of which is empty. The result depends only on
/// the arguments and on the content of the tiles that are cut.
std::vector<Shard> dealOut(const std::vector<Piece>& tiles, const std::string& inputDirectory,
                           Division division);

} // namespace veldtrim
