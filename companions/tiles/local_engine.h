/// The engine that clips shards on this machine: GNU parallel.
#pragma once

#include "tiles/shard_watch.h"
#include "tiles/staging.h"

namespace veldtrim {

/// Lets GNU parallel clip the shards that are not done, so many at once, and tells meanwhile what
/// they say. Only their numbers pass a shell. A single shard needs no engine.
///
/// Returns whether all are done. If not, what failed was told. Throws std::runtime_error if a
/// signal asked to stop, after all jobs have ended, or if the engine cannot do its work.
bool clipOnThisMachine(const Staging& staging, ShardWatch& shards, int jobs);

/// Returns the number of processors that this process may use.
int processorCount();

} // namespace veldtrim
