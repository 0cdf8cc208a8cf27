/// Reasons to skip a file of the input directory, and the message about it.
#pragma once

#include "elevation/header.h"

#include <string>
#include <string_view>
#include <system_error>

namespace veldtrim {

/// Parses the header line of a file, without its line end, into `header`. Returns why a file with
/// this header is skipped; empty if it is accepted.
std::string readHeaderOrReason(std::string_view line, ElevationHeader& header);

/// Returns the reason to skip a file that cannot be read because of `error`.
std::string cannotBeRead(std::error_code error);

/// Sends a StateMessage that the file at `path` is skipped, with the reason.
void reportSkipped(const std::string& path, const std::string& reason);

} // namespace veldtrim
