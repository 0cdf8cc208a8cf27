/// The status-message library as tests link it: nothing is delivered, everything is recorded.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace veldtrim::pulsenote_recorder {

enum class EventKind {
    Instance,
    State,
    Finish,
    Failed,
    Error,
    ProgressBegin,
    ProgressStep,
    ProgressEnd
};

/// One thing that the library was told. Fields that its kind does not have keep their zeros.
struct Event {
    EventKind kind{};
    int code = 0;
    std::string text{};
    /// The pipe mode, for `Instance`.
    bool flag = false;
    double start = 0;
    double end = 0;
    int steps = 0;
    int step = 0;

    bool operator==(const Event&) const = default;
};

Event instance(bool pipeMode);
Event state(int code, std::string text, bool flag);
Event finish(int code, std::string text);
Event failed(int code, std::string text);
Event error(int code, std::string text);
Event progressBegin(double start, double end, int steps);
Event progressStep(int step, bool flag);
Event progressEnd();

/// As the call that makes the event, for test output; numbers to the last digit.
std::ostream& operator<<(std::ostream& out, const Event& event);

/// What was recorded since the start or the last `clear`, in order.
const std::vector<Event>& events();

/// Number of calls of `OnProgress` since then, recorded or not.
std::int64_t stepCount();

/// Forgets all events, counts from zero and records steps again.
void clear();

/// Whether single steps become events. Without them, a run of any length can be recorded.
void recordSteps(bool recorded);

} // namespace veldtrim::pulsenote_recorder
