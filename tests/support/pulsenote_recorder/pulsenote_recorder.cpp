#include "pulsenote_recorder.h"

#include "pulsenote.h"

#include <limits>
#include <ostream>
#include <utility>

namespace veldtrim::pulsenote_recorder {

namespace {

std::vector<Event> recordedEvents;
bool recordsSteps = true;
std::function<void(int)> stepObserver;

} // namespace

Event instance(bool pipeMode) {
    return {.kind = "instance", .flag = pipeMode};
}

Event state(const std::string& text) {
    return {.kind = "state", .code = 1, .text = text, .flag = true};
}

Event finish(const std::string& text) {
    return {.kind = "finish", .code = 1, .text = text};
}

Event failed(const std::string& text) {
    return {.kind = "failed", .code = 1, .text = text};
}

Event error(int code, const std::string& text) {
    return {.kind = "error", .code = code, .text = text};
}

Event progressBegin(double start, double end, int steps) {
    return {.kind = "progressBegin", .start = start, .end = end, .steps = steps};
}

Event progressStep(int step) {
    return {.kind = "progressStep", .steps = step};
}

Event progressEnd() {
    return {.kind = "progressEnd"};
}

std::ostream& operator<<(std::ostream& out, const Event& event) {
    out.precision(std::numeric_limits<double>::max_digits10);
    return out << event.kind << '(' << event.code << ", \"" << event.text << "\", " << event.flag
               << ", " << event.start << ", " << event.end << ", " << event.steps << ')';
}

const std::vector<Event>& events() {
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
    recordedEvents.push_back(instance(pipeMode));
    return sender;
}

StateMessage::StateMessage(int code, const std::string& text, bool flag) {
    recordedEvents.push_back({.kind = "state", .code = code, .text = text, .flag = flag});
}

FinishMessage::FinishMessage(int code, const std::string& text) {
    recordedEvents.push_back({.kind = "finish", .code = code, .text = text});
}

FailedMessage::FailedMessage(int code, const std::string& text) {
    recordedEvents.push_back({.kind = "failed", .code = code, .text = text});
}

ErrorMessage::ErrorMessage(int code, const std::string& text) {
    recordedEvents.push_back(error(code, text));
}

struct ProgressMessage::Stretch {};

ProgressMessage::ProgressMessage(double start, double end, int steps) {
    recordedEvents.push_back(progressBegin(start, end, steps));
}

ProgressMessage::~ProgressMessage() {
    recordedEvents.push_back(progressEnd());
}

void ProgressMessage::OnProgress(int step, bool flag) {
    if (stepObserver) {
        stepObserver(step);
    }
    if (recordsSteps) {
        recordedEvents.push_back({.kind = "progressStep", .flag = flag, .steps = step});
    }
}
