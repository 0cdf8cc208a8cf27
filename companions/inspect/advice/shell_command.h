/// Commands that a report prints for the user to copy.
#pragma once

#include <string>
#include <string_view>

namespace veldtrim {

/// `pattern` with each "{}" replaced by `path`, quoted for a POSIX shell if it needs to be.
std::string commandFor(std::string_view pattern, const std::string& path);

} // namespace veldtrim
