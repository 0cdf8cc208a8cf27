/// Joins the clipped parts of a tile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace veldtrim {

/// The output file of a part.
struct ClippedPart {
    std::string path;
    std::int64_t size = 0; ///< in bytes
    std::size_t shard = 0; ///< the shard that clipped it
};

/// The parts of a tile. A part without kept records has no output file.
struct PartsOfTile {
    std::int64_t records = 0;                  ///< of all parts
    std::map<std::int64_t, ClippedPart> files; ///< by the first byte of the part in the tile
};

/// The parts of all tiles that were cut, by the name of the tile.
using PartsOfTiles = std::map<std::string, PartsOfTile>;

/// Moves the first part to `directory`/`name`, and appends the others without their header line. In
/// between, the file has a place in the directory `unfinished`, so that it is complete when it has
/// its name. Whatever interrupts this, it can be called again. There must be a part.
///
/// Returns 0, or the shard of a part whose file is not there or has another size. Throws
/// std::system_error if a file cannot be read or written, and
/// boost::filesystem::filesystem_error if it cannot be moved.
std::size_t joinParts(const PartsOfTile& tile, const std::string& unfinished,
                      const std::string& directory, const std::string& name);

} // namespace veldtrim
