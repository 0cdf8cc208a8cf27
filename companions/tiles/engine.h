/// The engine that clips shards on this machine: GNU parallel.
#pragma once

#include "platform/posix/child_process.h"
#include "tiles/staging.h"

#include <memory>

namespace veldtrim {

/// Starts GNU parallel, which clips the shards whose numbers are the lines of the file `numbers` in
/// the staging directory, so many at once. Only these numbers pass a shell. Returns the process;
/// stopping it stops all jobs. Throws std::system_error if it cannot be started.
std::unique_ptr<ChildProcess> startParallel(const Staging& staging, const std::string& numbers,
                                            int jobs);

/// Returns the number of processors that this process may use.
int processorCount();

} // namespace veldtrim
