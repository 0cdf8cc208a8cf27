/// States of a run, told to whoever watches it.
#pragma once

#include <string>

namespace veldtrim {

/// Sends `text` as a StateMessage with code 1.
void reportState(const std::string& text);

} // namespace veldtrim
