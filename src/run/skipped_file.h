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

/// How the reason begins if a file cannot be read.
inline constexpr std::string_view cannotBeReadBecause = "it cannot be read: ";

/// Returns the reason to skip a file that cannot be read because of `error`.
std::string cannotBeRead(std::error_code error);

/// Returns the text of the message that the file at `path` is skipped, with the reason.
std::string skippedText(const std::string& path, const std::string& reason);

/// Sends a StateMessage that the file at `path` is skipped, with the reason.
void reportSkipped(const std::string& path, const std::string& reason);

} // namespace veldtrim
