/// Prepares a run in shards: its checks, its staging directory, its plan.
#pragma once

#include "platform/posix/file_lock.h"
#include "tiles/plan.h"
#include "tiles/planning.h"
#include "tiles/staging.h"

#include <memory>
#include <optional>

namespace veldtrim {

/// A run whose plan is published, and which no other command works at.
struct PreparedRun {
    Staging staging;
    Plan plan;
    std::unique_ptr<FileLock> lock;
};

/// Makes the checks of a run, leaves out the tiles that cannot keep a record according to the tile
/// index, unless its path is empty, takes the staging directory, and publishes the plan, or goes on
/// with the same plan if it was published before.
///
/// Returns nothing if a check failed, after reporting it as a run does; nothing is then changed on
/// disk. Throws std::runtime_error if another command is at work, or if the plan in the staging
/// directory is another one, and what the file system throws if it fails.
std::optional<PreparedRun> prepareRun(const Order& order, const std::string& tileIndex,
                                      const ShardSizes& sizes);

/// Prepares the making of a tile index: the plan contains the tiles in the directory `scans` that
/// the index does not know as they are. Another plan that is there is given up. Throws
/// std::runtime_error if there is no such directory, if the file is no tile index, or if another
/// command is at work, and what the file system throws if it fails.
PreparedRun prepareIndex(const std::string& scans, const std::string& tileIndex,
                         const ShardSizes& sizes);

/// Returns the path of the output directory of an order, as a run names it.
std::string outputDirectoryOf(const Order& order);

} // namespace veldtrim
