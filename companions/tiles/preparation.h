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

/// Makes the checks of a run, takes the staging directory, and publishes the plan, or goes on with
/// the same plan if it was published before.
///
/// Returns nothing if a check failed, after reporting it as a run does; nothing is then changed on
/// disk. Throws std::runtime_error if another command is at work, or if the plan in the staging
/// directory is another one, and what the file system throws if it fails.
std::optional<PreparedRun> prepareRun(const Order& order, const ShardSizes& sizes);

/// Returns the path of the output directory of an order, as a run names it.
std::string outputDirectoryOf(const Order& order);

} // namespace veldtrim
