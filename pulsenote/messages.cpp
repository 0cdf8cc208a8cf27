#include "outlet.h"
#include "pulsenote.h"

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
