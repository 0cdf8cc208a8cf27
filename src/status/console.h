/// Console lines: text for people, on standard output.
#pragma once

#include <string_view>

namespace veldtrim {

/// Writes `text` and a line end to standard output, and flushes it. Ignores failures, such as a
/// reader that has gone away.
void writeConsoleLine(std::string_view text);

/// Writes `text` without a line end. The next console text continues the line.
void writeConsoleText(std::string_view text);

} // namespace veldtrim
