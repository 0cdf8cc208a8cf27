/// A whole run in shards, and its steps.
#pragma once

#include "tiles/plan.h"
#include "tiles/planning.h"
#include "tiles/slurm_jobs.h"

#include <optional>
#include <string>

namespace veldtrim {

/// What a run in shards does besides the order of one run.
struct TilesOptions {
    ShardSizes sizes; ///< `jobs` says how many shards are clipped at once on this machine
    std::optional<SlurmOptions> slurm; ///< if Slurm is to clip the shards
    std::string tileIndex;             ///< path of the tile index; empty if there is none
    bool keepStaging = false;          ///< whether the staging directory stays after the run
};

/// Does what one run of Veldtrim does with the order, with the same result and the same messages:
/// plans, lets the engine clip the shards, and merges them. Goes on where a command that was
/// interrupted with the same order came to.
///
/// Returns 0 if the output directory is complete. Otherwise it was not created, and the result is
/// 1: a check failed, a shard failed in every attempt, or a signal asked to stop. Throws what
/// prepareRun and mergeShards throw.
int runInShards(const Order& order, const TilesOptions& options);

/// Makes and publishes the plan, and tells on standard output how many shards it has and where.
/// Returns 0, or 1 if a check failed. Throws what prepareRun throws.
int planRun(const Order& order, const TilesOptions& options);

/// Makes the tile index of the options for the directory `scans`, or brings it up to date. Returns
/// 0, or 1 if a tile could not be read, which is reported; the index is then as before. Throws what
/// prepareIndex and mergeIndex throw.
int indexTiles(const std::string& scans, const TilesOptions& options);

/// Merges the shards in the staging directory and tells what they said. Returns 0 if the output
/// directory is complete, and 1 if there were no input files. Throws what mergeShards throws, and
/// std::runtime_error if another command is at work there.
int mergeRun(const std::string& stagingDirectory, bool keepStaging);

/// The same as a job of an engine, for a command that waits for it, or another one later: that
/// command tells what the shards said. Does nothing if the shards are merged, and waits if another
/// job merges them. Returns 0; throws what mergeShards throws.
int mergeAsJob(const std::string& stagingDirectory);

} // namespace veldtrim
