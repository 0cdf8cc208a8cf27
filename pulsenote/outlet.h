/// Delivers all messages of the process.
#pragma once

#include "message_lines.h"
#include "terminal_progress.h"
#include "thinning.h"

#include <string>
#include <variant>
#include <vector>

namespace veldtrim::pulsenote {

/// The state of the sender: the form of delivery, the messages that wait for it, and the progress.
///
/// Messages go to standard error, each line in one write. No operation throws: a message for which
/// there is no memory or no receiver is lost, and the run continues.
class Outlet {
public:
    enum class Form { Person, Host };

    /// Checks whether standard error is open, and keeps a closed pipe from ending the process.
    Outlet() noexcept;

    /// Fixes the form of delivery and delivers, in order, the messages that were sent before. Only
    /// the first call has an effect.
    void setForm(Form form) noexcept;

    /// Delivers a text message, or keeps it until the form is known. Only state messages use
    /// `flag`.
    void sendText(MessageKind kind, int code, const std::string& text, bool flag) noexcept;

    /// The state that all stretches of progress share.
    Thinning& thinning() noexcept { return thinning_; }

    /// Begins a stretch of progress, with the arguments of ProgressMessage.
    void beginStretch(double start, double end, int steps) noexcept;

    /// Delivers a position, or keeps it until the form is known. In the form for a person, it is
    /// shown only on a terminal.
    void sendProgress(double position, bool flag) noexcept;

    /// Must be called when the process ends. Delivers the messages that still wait, in the form for
    /// a person, and removes the progress line. Later messages are delivered at once.
    void finish() noexcept;

private:
    struct Text {
        MessageKind kind;
        int code;
        std::string text;
        bool flag;
    };
    struct Progress {
        double position;
        bool flag;
    };
    enum class State { FormUnknown, ForPerson, ForHost };

    void deliver(MessageKind kind, int code, const std::string& text, bool flag) noexcept;
    void deliver(double position, bool flag) noexcept;

    State state_ = State::FormUnknown;
    /// Stays false if standard error was closed from the start: a file that the program opens later
    /// can take its descriptor, and no message may end up in that file.
    bool hasReceiver_;
    bool showsProgress_ = false;
    Thinning thinning_;
    TerminalProgress terminalProgress_;
    std::vector<std::variant<Text, Progress>> waiting_;
};

/// The outlet of the process. It can be used at any time, including before and after `main`,
/// because it is never destroyed. `Outlet::finish` is called when `main` returns or the process
/// calls `exit`.
Outlet& outlet() noexcept;

} // namespace veldtrim::pulsenote
