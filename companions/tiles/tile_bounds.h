/// What is known of a tile without clipping it.
#pragma once

#include "geometry/bounding_box.h"

#include <cstdint>
#include <string>

namespace veldtrim {

/// The records of a tile, and where they are.
struct TileBounds {
    bool isInput = true;      ///< whether a run takes it as an input file
    std::int64_t records = 0; ///< lines after the header, as a run counts them

    /// The box around the points of all lines that are records, in the units of the tile.
    BoundingBox bounds = BoundingBox::empty();

    /// Adds what is known of another part of the same tile.
    void add(const TileBounds& part);
};

/// Reads the tile at `path` once; memory grows only with its longest line. A file that a run would
/// skip has no records. Throws std::runtime_error, which names the file and the reason, if it
/// cannot be read.
TileBounds measureTile(const std::string& path);

} // namespace veldtrim
