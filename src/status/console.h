/// Lines on standard output, for a person who watches the console.
#pragma once

#include <string_view>

namespace veldtrim {

/// Writes `text` and a line end to standard output and flushes it. A reader of standard output that
/// has gone away is no failure.
void writeConsoleLine(std::string_view text);

/// Writes `text` alone: the next console text continues its line.
void writeConsoleText(std::string_view text);

} // namespace veldtrim
