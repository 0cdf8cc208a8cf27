/// The plan of a run in shards: which tiles, or parts of tiles, each shard clips.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// The arguments of a run, as the user gave them.
struct Order {
    std::string scans;
    std::string output;
    std::string boundary;
};

/// A tile, which is a file that takes part unless its header is rejected, or a part of a tile.
struct Piece {
    std::string name;          ///< of the tile in the input directory
    std::int64_t size = 0;     ///< of the tile, in bytes
    std::int64_t modified = 0; ///< when the tile was changed, in nanoseconds since 1970
    bool isReadable = true;    ///< whether the tile could be read when the plan was made
    bool isMeasured = false;   ///< whether its bounds are to be found for the tile index

    /// The bytes of a part, whose first is not part of the header line unless it is byte 0. A whole
    /// tile has `end` 0, and so has a part that ends where the tile ends.
    std::int64_t begin = 0;
    std::int64_t end = 0;

    [[nodiscard]] bool isPart() const { return begin != 0 || end != 0; }

    /// How many bytes of the tile it is.
    [[nodiscard]] std::int64_t bytes() const { return (end == 0 ? size : end) - begin; }
};

/// The pieces of a shard, of which no two have the same number.
using Shard = std::vector<Piece>;

/// What all shards have in common.
struct Plan {
    Order order;
    std::string tileIndex; ///< path of the tile index; empty if there is none
    bool clips = true;     ///< false if the tile index is all that is made; it is the output then
    std::int64_t leftOut = 0; ///< how many input files need not be read
    std::string directory;    ///< the directory from which relative paths of the order lead
    std::int64_t boundarySize = 0;
    std::int64_t boundaryModified = 0;
    std::int64_t shardSize = 0;           ///< the most bytes of a piece
    std::vector<std::int64_t> shardBytes; ///< for each shard, the bytes of its pieces

    [[nodiscard]] std::size_t shardCount() const { return shardBytes.size(); }

    /// Returns the input and the output directory as messages of a run name them.
    [[nodiscard]] std::string shownInput() const;
    [[nodiscard]] std::string shownOutput() const;

    /// Returns a path of the order as an absolute one.
    [[nodiscard]] std::string absolute(const std::string& path) const;
};

/// Returns the plan as JSON, which readPlan reads. Plans with the same text are the same.
std::string planText(const Plan& plan);

/// Returns the shard as lines of JSON, one for each piece, which readShard reads.
std::string shardText(const Shard& shard);

/// Return what the texts say. Throw std::runtime_error if they are none of these texts.
Plan readPlan(std::string_view text);
Shard readShard(std::string_view text);

} // namespace veldtrim
