/// Reports the state of a run and the end of its progress.
#pragma once

#include <string>

namespace veldtrim {

/// Sends `text` as a StateMessage with code 1.
void reportState(const std::string& text);

/// Sends the last position of the progress, 100.
void reportEndOfProgress();

} // namespace veldtrim
