/// Composes the progress line of a terminal. Does not write anything and does not read a clock.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace veldtrim::pulsenote {

/// One line that is redrawn in place, at most ten times a second: a bar, the percentage, records
/// per second and the time left, or fewer of these on a narrow terminal.
///
/// Nothing else may be on the cursor's line: before you write anything else, write the result of
/// `erase`. The texts consist of carriage returns and printable ASCII.
class TerminalProgress {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Begins a stretch from `start` to `end` in `steps` steps. The first call starts the run's
    /// clock. The steps of a stretch are records if it begins at 0 or where the stretch before it
    /// ends; otherwise they are something else.
    void beginStretch(double start, double end, int steps, Time now);

    /// Returns the text that shows `position` on the scale of 0 to 100; a position outside the
    /// scale is shown as its nearer end. `width` is the width of the terminal in columns. The text
    /// is empty if the line would not change or was last drawn less than a tenth of a second ago.
    std::string draw(double position, Time now, std::size_t width);

    /// Returns the text that removes the line and moves the cursor to its start. It is empty if no
    /// line is shown.
    std::string erase(std::size_t width);

    /// Returns the text that shows the line again that `erase` removed. It is empty if `erase`
    /// removed none, or if the terminal is now too narrow for it.
    std::string restore(std::size_t width);

    /// Returns the text that removes the line for good: `restore` does not show it again.
    std::string end(std::size_t width);

private:
    [[nodiscard]] std::string compose(double position, Time now, std::size_t width) const;

    std::string shown_;
    std::string erased_;
    std::optional<Time> begun_;
    std::optional<Time> drawn_;
    double stretchEnd_ = 0.0;
    double recordsPerPercent_ = 0.0; ///< 0 until it is known
};

} // namespace veldtrim::pulsenote
