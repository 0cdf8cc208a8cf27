/// A status-message library for tests: it delivers nothing and records everything.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace veldtrim::pulsenote_recorder {

/// One call of the library. Fields that do not apply to its kind keep their defaults.
struct Event {
    std::string kind;
    int code = 0;
    std::string text{};
    bool flag = false; ///< the pipe mode, for an instance
    double start = 0;
    double end = 0;
    int steps = 0; ///< the number of steps of a stretch, or the step that was reached

    bool operator==(const Event&) const = default;
};

Event instance(bool pipeMode);
Event state(const std::string& text);
Event finish(const std::string& text);
Event failed(const std::string& text);
Event error(int code, const std::string& text);
Event progressBegin(double start, double end, int steps);
Event progressStep(int step);
Event progressEnd();

std::ostream& operator<<(std::ostream& out, const Event& event);

/// The events since the start or the last `clear`, in order.
const std::vector<Event>& events();

/// Removes all events and the observer, and records steps again.
void clear();

/// Whether single steps are recorded. Without them, a run of any length can be recorded.
void recordSteps(bool recorded);

/// Calls `observer` for each step before it is recorded.
void tellSteps(std::function<void(int step)> observer);

} // namespace veldtrim::pulsenote_recorder
