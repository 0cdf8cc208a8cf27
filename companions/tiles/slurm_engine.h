/// The engine that clips and merges shards on a cluster: Slurm.
#pragma once

#include "tiles/shard_watch.h"
#include "tiles/slurm_jobs.h"
#include "tiles/staging.h"

namespace veldtrim {

/// Submits jobs that clip the shards that are not done and a job that merges them, unless the plan
/// is for a tile index. Waits for them, and tells meanwhile what the shards say. If the jobs of an
/// earlier command are at work, waits for these. When a shard has failed, no further one begins,
/// but those that have begun go on.
///
/// Returns whether the work of the jobs is done; if not, what failed was told. The jobs do not need
/// this process: if it is killed or its terminal is closed, they go on. Throws std::runtime_error
/// if Slurm refuses a job or has lost it, or if another signal asked to stop, after ending all
/// jobs.
bool runOnSlurm(const Staging& staging, const Plan& plan, ShardWatch& shards,
                const SlurmOptions& options);

} // namespace veldtrim
