/// Why a file of the input directory is skipped, and the message that says so.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>
#include <system_error>

namespace veldtrim {

/// Reads the header line (without its line end) of a file to `header`. Returns why a file with this
/// line is skipped; empty if it is accepted.
std::string readHeaderOrReason(std::string_view line, ElevationHeader& header);

/// The reason to skip a file that the system does not let the run read.
std::string cannotBeRead(std::error_code error);

/// Sends a StateMessage that says that the file at `path` is skipped, and why.
void reportSkipped(const std::string& path, const std::string& reason);

} // namespace veldtrim
