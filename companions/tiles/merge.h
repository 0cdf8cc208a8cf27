/// Merges the shards into the output directory.
#pragma once

#include "tiles/shard_report.h"
#include "tiles/staging.h"
#include "tiles/tile_index.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace veldtrim {

/// What the shards of a run have in common with one run over all tiles.
struct MergeResult {
    bool hadInput = false; ///< whether any shard had an input file; if not, nothing was published
};

/// What becomes of the staging directory after a merge.
enum class AfterMerge : std::uint8_t {
    Remove,
    Keep,
    Hand, ///< the plan and the reports stay for the command that finishes the run
};

/// Reads the report of a shard that is done. Throws std::runtime_error if it is damaged, after
/// taking the shard back so that it is clipped again.
ShardReport loadDone(const Staging& staging, std::size_t number);

/// Moves the output files of all shards, which must be done, to one directory under the names of
/// their tiles, joins the parts of tiles, writes the total, and gives the directory the name of the
/// output directory with one rename. The staging directory then becomes what `after` says.
///
/// Whatever interrupts this, it can be called again, and the output directory is complete or does
/// not exist. Throws std::runtime_error if a shard is not done or is damaged, in which case it is
/// taken back, if the output directory exists, or if a signal asked to stop; and std::length_error
/// if a tile has more records than one run can count. Returns nothing if another process merges.
std::optional<MergeResult> mergeShards(const Staging& staging, const Plan& plan, AfterMerge after);

/// Brings the tile index of the plan up to date from what the shards found, and removes the staging
/// directory. Throws what loadDone and updateIndex throw.
void mergeIndex(const Staging& staging, const Plan& plan);

/// Whether a merge has published the output directory but not removed the staging directory.
bool isPublished(const Staging& staging, const std::string& outputDirectory);
bool isPublished(const Staging& staging, const Plan& plan);

/// Does with the staging directory what is left to do after a merge has published its output
/// directory. The caller must have its lock.
void finishMerge(const Staging& staging, AfterMerge after);

} // namespace veldtrim
