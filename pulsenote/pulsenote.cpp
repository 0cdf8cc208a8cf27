#include "pulsenote.h"

#include "outlet.h"
#include "thinning.h"

#include <new>

using veldtrim::pulsenote::MessageKind;
using veldtrim::pulsenote::outlet;
using veldtrim::pulsenote::Outlet;

MessageSender& MessageSender::Instance(bool pipeMode) {
    static MessageSender sender;
    outlet().setForm(pipeMode ? Outlet::Form::Host : Outlet::Form::Person);
    return sender;
}

StateMessage::StateMessage(int code, const std::string& text, bool flag) {
    outlet().sendText(MessageKind::State, code, text, flag);
}

FinishMessage::FinishMessage(int code, const std::string& text) {
    outlet().sendText(MessageKind::Finish, code, text, false);
}

FailedMessage::FailedMessage(int code, const std::string& text) {
    outlet().sendText(MessageKind::Failed, code, text, false);
}

ErrorMessage::ErrorMessage(int code, const std::string& text) {
    outlet().sendText(MessageKind::Error, code, text, false);
}

struct ProgressMessage::Stretch : veldtrim::pulsenote::Stretch {
    using veldtrim::pulsenote::Stretch::Stretch;
};

// If there is no memory, the stretch is not reported: lost progress must not end the run.
ProgressMessage::ProgressMessage(double start, double end, int steps)
    : stretch_(new (std::nothrow) Stretch(outlet().thinning(), {start, end, steps})) {
    outlet().beginStretch(start, end, steps);
}

ProgressMessage::~ProgressMessage() = default;

void ProgressMessage::OnProgress(int step, bool flag) {
    if (!stretch_ || stretch_->isQuiet(step)) {
        return;
    }
    if (const auto position = stretch_->reach(step)) {
        outlet().sendProgress(*position, flag);
    }
}
