/// Where all messages of the process leave it.
#pragma once

#include "message_lines.h"
#include "terminal_progress.h"
#include "thinning.h"

#include <string>
#include <variant>
#include <vector>

namespace veldtrim::pulsenote {

/// The state of the one sender of the process: the form of delivery, the messages that wait for it,
/// and what is known of the progress.
///
/// Messages go to standard error, a line in one write. No operation throws: a message for which
/// there is no memory or no receiver is lost, and the run goes on.
class Outlet {
public:
    enum class Form { Person, Host };

    /// Looks whether there is a standard error, and keeps a closed pipe from ending the process.
    Outlet() noexcept;

    /// Fixes the form of delivery and delivers, in order, what was sent before. The form is fixed
    /// once: later calls change nothing.
    void setForm(Form form) noexcept;

    /// Delivers a text message, or keeps it until the form is known. `flag` counts for state
    /// messages only.
    void sendText(MessageKind kind, int code, const std::string& text, bool flag) noexcept;

    /// The state that all stretches of progress share.
    Thinning& thinning() noexcept { return thinning_; }

    /// A stretch of progress begins; the arguments are those of ProgressMessage.
    void beginStretch(double start, double end, int steps) noexcept;

    /// Delivers a position that is news, or keeps it until the form is known. A person sees it on a
    /// terminal only.
    void sendProgress(double position, bool flag) noexcept;

    /// The process ends: delivers what still waits, in the form for a person, and leaves the
    /// terminal clean. Messages of objects that are destroyed later are delivered at once.
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
    Thinning thinning_;
    TerminalProgress terminalProgress_;
    std::vector<std::variant<Text, Progress>> waiting_;
};

/// The outlet of the process. Usable at any time, also before `main` and after it: it is never
/// destroyed. `Outlet::finish` is called when the process ends by a return from `main` or by
/// `exit`.
Outlet& outlet() noexcept;

} // namespace veldtrim::pulsenote
