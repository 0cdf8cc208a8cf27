/// How progress looks on a terminal. Knows nothing of where it is written, nor of clocks.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace veldtrim::pulsenote {

/// One line that is redrawn in place, at most ten times a second: a bar, percent, records per
/// second, time left; fewer of these where the terminal is narrow.
///
/// The line stands alone on the cursor's line; whoever writes anything else first writes what
/// `erase` returns. Nothing but carriage returns, blanks and printable ASCII is used.
class TerminalProgress {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A stretch from `start` to `end` in `steps` steps begins. The steps of stretches that join
    /// end to end, the first beginning at 0, are the run's records; a stretch that begins elsewhere
    /// counts something else. The first call is when the run's clock starts.
    void beginStretch(double start, double end, int steps, Time now);

    /// What to write to show `position`, on the scale of 0 to 100; positions outside of it are
    /// shown as its nearer end. `width` is the terminal's, in columns. Empty where the line would
    /// not change, or less than a tenth of a second after it was drawn last.
    std::string draw(double position, Time now, std::size_t width);

    /// What to write to take the line off the terminal, the cursor at its start; empty where none
    /// is shown.
    std::string erase(std::size_t width);

    /// What to write to show the line again that `erase` took off; empty where it took none off, or
    /// one that the terminal is too narrow for now.
    std::string restore(std::size_t width);

private:
    [[nodiscard]] std::string compose(double position, Time now, std::size_t width) const;

    std::string shown_;
    std::string erased_;
    std::optional<Time> begun_;
    std::optional<Time> drawn_;
    double stretchEnd_ = 0.0;
    double recordsPerPercent_ = 0.0; ///< 0 as long as it is not known
};

} // namespace veldtrim::pulsenote
