/// Standard error as the operating system sees it.
#pragma once

#include <cstddef>
#include <string_view>

namespace veldtrim {

/// Whether standard error is open. Call this before the process opens files: the first file would
/// get the descriptor of a closed standard error.
bool standardErrorIsOpen() noexcept;

/// Whether standard error is a terminal.
bool standardErrorIsTerminal() noexcept;

/// The number of columns that is assumed if the terminal does not report it.
inline constexpr std::size_t usualTerminalWidth = 80;

/// The current number of columns of the terminal behind standard error, or `usualTerminalWidth` if
/// the terminal does not report it or standard error is not a terminal.
std::size_t standardErrorWidth() noexcept;

/// Writes `text` to standard error in one write, or in several if the system accepts only a part.
///
/// Waits for a slow reader. Ignores failures, because no one is left to report them to. A pipe
/// without a reader raises SIGPIPE; `ignorePipeSignal` keeps that from ending the process.
void writeToStandardError(std::string_view text) noexcept;

} // namespace veldtrim
