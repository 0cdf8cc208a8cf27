/// Standard error as the operating system sees it.
#pragma once

#include <cstddef>
#include <string_view>

namespace veldtrim {

/// Whether the process has a standard error at this moment. Ask before the process opens files: the
/// first file would take the number of a standard error that is closed.
bool standardErrorIsOpen() noexcept;

/// Whether standard error is a terminal.
bool standardErrorIsTerminal() noexcept;

/// Columns of a terminal that does not say how many it has.
inline constexpr std::size_t usualTerminalWidth = 80;

/// Columns of the terminal that standard error goes to, at this moment; `usualTerminalWidth` where
/// the terminal does not say, or where it is none.
std::size_t standardErrorWidth() noexcept;

/// Writes `text` to standard error in one write, or in several where the system takes only a part.
///
/// Gives up silently on a failure: there is nobody left to tell. Waits for a reader that is slow.
/// A pipe without a reader raises SIGPIPE; `ignorePipeSignal` keeps that from ending the process.
void writeToStandardError(std::string_view text) noexcept;

} // namespace veldtrim
