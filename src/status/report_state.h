/// States of a run, and the end of its progress, told to whoever watches it.
#pragma once

#include <string>

namespace veldtrim {

/// Sends `text` as a StateMessage with code 1.
void reportState(const std::string& text);

/// Sends the last step of the progress: all is done.
void reportEndOfProgress();

} // namespace veldtrim
