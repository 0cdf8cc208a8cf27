/// The status-message library as tests link it: nothing is delivered, everything is recorded.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace veldtrim::pulsenote_recorder {

/// One thing that the library was told. Fields that its kind does not have keep their zeros.
struct Event {
    std::string kind;
    int code = 0;
    std::string text{};
    bool flag = false; ///< the pipe mode, for an instance
    double start = 0;
    double end = 0;
    int steps = 0; ///< of a stretch, or the one that is reported

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

/// What was recorded since the start or the last `clear`, in order.
const std::vector<Event>& events();

/// Forgets all events, records steps again, and no longer tells anybody of them.
void clear();

/// Whether single steps become events. Without them, a run of any length can be recorded.
void recordSteps(bool recorded);

/// Calls `observer` at each step, before it is recorded.
void tellSteps(std::function<void(int step)> observer);

} // namespace veldtrim::pulsenote_recorder
