#include "pulsenote_recorder.h"

#include "pulsenote.h"

#include <limits>
#include <sstream>
#include <utility>

namespace veldtrim::pulsenote_recorder {

namespace {

std::vector<std::string> recordedEvents;
bool recordsSteps = true;
std::function<void(int)> stepObserver;

template <typename... Arguments>
void record(const char* kind, const Arguments&... arguments) {
    std::ostringstream event;
    event.precision(std::numeric_limits<double>::max_digits10);
    event << std::boolalpha << kind;
    ((event << ' ' << arguments), ...);
    recordedEvents.push_back(event.str());
}

} // namespace

const std::vector<std::string>& events() {
    return recordedEvents;
}

void clear() {
    recordedEvents.clear();
    recordsSteps = true;
    stepObserver = nullptr;
}

void recordSteps(bool recorded) {
    recordsSteps = recorded;
}

void tellSteps(std::function<void(int step)> observer) {
    stepObserver = std::move(observer);
}

} // namespace veldtrim::pulsenote_recorder

using namespace veldtrim::pulsenote_recorder; // NOLINT(google-build-using-namespace)

MessageSender& MessageSender::Instance(bool pipeMode) {
    static MessageSender sender;
    record("instance", pipeMode);
    return sender;
}

StateMessage::StateMessage(int code, const std::string& text, bool flag) {
    record("state", code, flag, text);
}

FinishMessage::FinishMessage(int code, const std::string& text) {
    record("finish", code, text);
}

FailedMessage::FailedMessage(int code, const std::string& text) {
    record("failed", code, text);
}

ErrorMessage::ErrorMessage(int code, const std::string& text) {
    record("error", code, text);
}

struct ProgressMessage::Stretch {};

ProgressMessage::ProgressMessage(double start, double end, int steps) {
    record("begin", start + 0.0, end + 0.0, steps); // minus zero is zero
}

ProgressMessage::~ProgressMessage() {
    record("end");
}

void ProgressMessage::OnProgress(int step, bool flag) {
    if (stepObserver) {
        stepObserver(step);
    }
    if (recordsSteps) {
        record("step", step, flag);
    }
}
