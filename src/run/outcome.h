/// The first and the last messages of a run.
#pragma once

#include <functional>

namespace veldtrim {

/// The code of error messages that stem from the command line or from a failure of the system.
inline constexpr int runErrorCode = 0;

/// The text of the first message of a run.
inline constexpr const char* startText = "Starting Orlagon...";

/// Sends the first message of a run.
void reportStart();

/// Sends the message of a run that failed. Returns 1, its exit code.
int reportFailure();

/// Calls `run` and sends the outcome: the run finished if the result is 0; otherwise, or if it ends
/// with a standard exception, which is reported, it failed. Returns the exit code, 0 or 1.
int reportOutcome(const std::function<int()>& run);

} // namespace veldtrim
