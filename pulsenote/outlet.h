/// Where all messages of the process leave it.
#pragma once

#include "message_text.h"
#include "terminal_progress.h"

#include <string>
#include <variant>
#include <vector>

namespace veldtrim::pulsenote {

/// The one sender state of the process: it knows the form of delivery and keeps what waits for it.
///
/// Messages go to standard error, a line in one write. No operation throws: a message for which
/// there is no memory or no receiver is lost, and the run goes on.
class Outlet {
public:
    enum class Form { Person, Host };

    Outlet() noexcept;

    /// Fixes the form of delivery and delivers, in order, what was sent before. The form is fixed
    /// once: later calls change nothing.
    void setForm(Form form) noexcept;

    /// Delivers a text message, or keeps it until the form is known. `flag` counts for state
    /// messages only.
    void sendText(MessageKind kind, int code, const std::string& text, bool flag) noexcept;

    /// A stretch of progress begins, as ProgressMessage has it.
    void beginStretch(double start, double end, int steps) noexcept;

    /// Delivers a position, or keeps it until the form is known. A person sees it on a terminal
    /// only. Thinning is the caller's.
    void sendProgress(double position, bool flag) noexcept;

    /// The process ends: what still waits is delivered in the form for a person, and the terminal
    /// is left clean. What is sent later still, by objects that die later, is delivered at once.
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
    /// A receiver that was missing from the start stays missing, even when a file that the program
    /// opens later takes the number of standard error: a message must never end up in that file.
    bool hasReceiver_;
    bool showsProgress_ = false;
    TerminalProgress terminalProgress_;
    std::vector<std::variant<Text, Progress>> waiting_;
};

/// The outlet of the process. Usable at any time, also before `main` and after it: it is never
/// destroyed. `Outlet::finish` is called when the process ends by a return from `main` or by
/// `exit`.
Outlet& outlet() noexcept;

} // namespace veldtrim::pulsenote
