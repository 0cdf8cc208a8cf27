/// A status-message library for tests: it delivers nothing and records everything.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace veldtrim::pulsenote_recorder {

/// The calls of the library since the start or the last `clear`, in order. Each is a line of its
/// kind and its arguments, such as "state 1 true Reading...", with the text behind all others, or
/// "begin 0 50 10" and "end" for a stretch of progress with "step 0 false" and so on between them.
const std::vector<std::string>& events();

/// Removes all events and the observer, and records steps again.
void clear();

/// Whether single steps are recorded. Without them, a run of any length can be recorded.
void recordSteps(bool recorded);

/// Calls `observer` for each step before it is recorded.
void tellSteps(std::function<void(int step)> observer);

} // namespace veldtrim::pulsenote_recorder
