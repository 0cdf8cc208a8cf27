/// Standard input and standard output as bytes, in the same way on all platforms.
#pragma once

#include <string>
#include <string_view>

namespace veldtrim {

/// Returns all bytes of standard input. Throws std::system_error if reading fails.
std::string readStandardInput();

/// Writes `bytes` to standard output as they are. Throws std::system_error if writing fails; a part
/// of the bytes may then have been written.
void writeToStandardOutput(std::string_view bytes);

} // namespace veldtrim
