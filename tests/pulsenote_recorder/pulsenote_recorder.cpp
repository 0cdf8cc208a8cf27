#include "pulsenote_recorder.h"

#include "pulsenote.h"

#include <array>
#include <charconv>
#include <ostream>
#include <utility>

namespace veldtrim::pulsenote_recorder {

namespace {

struct Recording {
    std::vector<Event> events;
    std::int64_t stepCount = 0;
    bool recordsSteps = true;
};

Recording& recording() {
    static Recording theRecording;
    return theRecording;
}

void record(Event event) {
    recording().events.push_back(std::move(event));
}

/// Shortest form that tells this double from all others.
std::string number(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), end.ptr};
}

} // namespace

Event instance(bool pipeMode) {
    return {.kind = EventKind::Instance, .flag = pipeMode};
}

Event state(int code, std::string text, bool flag) {
    return {.kind = EventKind::State, .code = code, .text = std::move(text), .flag = flag};
}

Event finish(int code, std::string text) {
    return {.kind = EventKind::Finish, .code = code, .text = std::move(text)};
}

Event failed(int code, std::string text) {
    return {.kind = EventKind::Failed, .code = code, .text = std::move(text)};
}

Event error(int code, std::string text) {
    return {.kind = EventKind::Error, .code = code, .text = std::move(text)};
}

Event progressBegin(double start, double end, int steps) {
    return {.kind = EventKind::ProgressBegin, .start = start, .end = end, .steps = steps};
}

Event progressStep(int step, bool flag) {
    return {.kind = EventKind::ProgressStep, .flag = flag, .step = step};
}

Event progressEnd() {
    return {.kind = EventKind::ProgressEnd};
}

std::ostream& operator<<(std::ostream& out, const Event& event) {
    const auto* const flag = event.flag ? "true" : "false";
    const auto text = [&](const char* name) -> std::ostream& {
        return out << name << '(' << event.code << ", \"" << event.text << '"';
    };
    switch (event.kind) {
    case EventKind::Instance:
        return out << "instance(" << flag << ')';
    case EventKind::State:
        return text("state") << ", " << flag << ')';
    case EventKind::Finish:
        return text("finish") << ')';
    case EventKind::Failed:
        return text("failed") << ')';
    case EventKind::Error:
        return text("error") << ')';
    case EventKind::ProgressBegin:
        return out << "progressBegin(" << number(event.start) << ", " << number(event.end) << ", "
                   << event.steps << ')';
    case EventKind::ProgressStep:
        return out << "progressStep(" << event.step << ", " << flag << ')';
    case EventKind::ProgressEnd:
        return out << "progressEnd()";
    }
    return out;
}

const std::vector<Event>& events() {
    return recording().events;
}

std::int64_t stepCount() {
    return recording().stepCount;
}

void clear() {
    recording() = {};
}

void recordSteps(bool recorded) {
    recording().recordsSteps = recorded;
}

} // namespace veldtrim::pulsenote_recorder

namespace recorder = veldtrim::pulsenote_recorder;

MessageSender& MessageSender::Instance(bool pipeMode) {
    static MessageSender sender;
    recorder::record(recorder::instance(pipeMode));
    return sender;
}

StateMessage::StateMessage(int code, const std::string& text, bool flag) {
    recorder::record(recorder::state(code, text, flag));
}

FinishMessage::FinishMessage(int code, const std::string& text) {
    recorder::record(recorder::finish(code, text));
}

FailedMessage::FailedMessage(int code, const std::string& text) {
    recorder::record(recorder::failed(code, text));
}

ErrorMessage::ErrorMessage(int code, const std::string& text) {
    recorder::record(recorder::error(code, text));
}

struct ProgressMessage::Stretch {};

ProgressMessage::ProgressMessage(double start, double end, int steps) {
    recorder::record(recorder::progressBegin(start, end, steps));
}

ProgressMessage::~ProgressMessage() {
    recorder::record(recorder::progressEnd());
}

void ProgressMessage::OnProgress(int step, bool flag) {
    ++recorder::recording().stepCount;
    if (recorder::recording().recordsSteps) {
        recorder::record(recorder::progressStep(step, flag));
    }
}
