/// How progress looks on a terminal. Knows nothing of where it is written.
#pragma once

#include <string>

namespace veldtrim::pulsenote {

/// One line that is redrawn in place.
///
/// The line stands alone on the cursor's line; whoever writes anything else first writes what
/// `erase` returns.
class TerminalProgress {
public:
    /// What to write to show `position`, on the scale of 0 to 100; positions outside of it are
    /// shown as its nearer end. Empty where the line would not change.
    std::string draw(double position);

    /// What to write to take the line off the terminal, the cursor at its start; empty where none
    /// is shown.
    std::string erase();

private:
    std::string shown_;
};

} // namespace veldtrim::pulsenote
