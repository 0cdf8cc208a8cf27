/// The tile index: a GeoJSON file with the bounds of all tiles.
#pragma once

#include "boundary/model/boundary_model.h"
#include "tiles/plan.h"
#include "tiles/tile_bounds.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace veldtrim {

/// What the index says of a tile. It is out of date if the tile has another size or time.
struct IndexedTile {
    std::int64_t size = 0;     ///< in bytes
    std::int64_t modified = 0; ///< in nanoseconds since 1970
    TileBounds content;
};

/// The tiles of a directory, by their names.
using TileIndex = std::map<std::string, IndexedTile>;

/// Reads the index at `path`, which updateIndex wrote. Returns an empty one if there is no such
/// file. Throws std::runtime_error if the file is something else, so that nobody's file is
/// replaced.
TileIndex readIndex(const std::string& path);

/// Returns whether the index knows the tile as it is.
bool isIndexed(const TileIndex& index, const Piece& tile);

/// Marks the readable tiles that the index does not know as they are, so that it can be brought up
/// to date.
void markUnknown(std::vector<Piece>& tiles, const TileIndex& index);

/// Adds to the index at `path` what is known of the tiles in `directory`, and removes from it those
/// that `tiles` does not list. The file is created or replaced with one rename; other commands that
/// update it at the same time wait. It is a FeatureCollection with one feature on each line: the
/// bounds of a tile as a polygon, and `location`, its path in `directory`. Throws what readIndex
/// throws, and std::system_error or what the file system throws if it cannot be written.
void updateIndex(const std::string& path, const std::string& directory,
                 const std::vector<Piece>& tiles, const TileIndex& known);

/// Removes from `tiles` those that the index knows and that cannot keep a record: their bounds do
/// not meet the bounds of any polygon, widened by as much as the point test allows. A tile with
/// more records than a run can count stays, so that the run fails as it does without an index.
/// Returns how many were removed. Takes time O((tiles + polygons) log polygons).
std::int64_t leaveOut(std::vector<Piece>& tiles, const TileIndex& index,
                      const BoundaryModel& model);

} // namespace veldtrim
