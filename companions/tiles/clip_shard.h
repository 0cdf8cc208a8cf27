/// Clips a shard: the step that an engine distributes.
#pragma once

#include "tiles/staging.h"

#include <cstddef>

namespace veldtrim {

/// Clips the shard with this number, in a bounded number of attempts, and publishes it. Does
/// nothing if it is done. Can be called for the same shard at the same time, on any machine.
///
/// Returns 0 when the shard is done, whoever did it, and 1 if every attempt failed or a signal
/// asked to stop; what failed is told on standard error and left in the staging directory. Throws
/// std::runtime_error if there is no such shard.
int clipShard(const Staging& staging, std::size_t number);

} // namespace veldtrim
