/// Where the running program lies.
#pragma once

#include <string>

namespace veldtrim {

/// Returns the absolute path of the program that this process runs. Throws std::system_error if the
/// system does not tell.
std::string ownProgram();

} // namespace veldtrim
