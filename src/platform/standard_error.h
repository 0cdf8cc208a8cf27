/// Standard error as the operating system sees it: the only place that calls on the platform.
#pragma once

#include <cstddef>
#include <string_view>

namespace veldtrim {

/// Whether the process has a standard error at this moment. To be asked before the process opens
/// files of its own: the first of them takes the number of a standard error that is closed.
bool standardErrorIsOpen() noexcept;

/// Whether standard error is a terminal.
bool standardErrorIsTerminal() noexcept;

/// Columns of a terminal that does not say how many it has.
inline constexpr std::size_t UsualTerminalWidth = 80;

/// Columns of the terminal that standard error is, at this moment.
std::size_t standardErrorWidth() noexcept;

/// Writes `text` to standard error in one write, going on where only a part was taken.
///
/// A failure ends the writing in silence: there is nobody left to tell. A closed pipe does not end
/// the process, whatever it does on SIGPIPE, and what it does on SIGPIPE stays as it was.
void writeToStandardError(std::string_view text) noexcept;

} // namespace veldtrim
