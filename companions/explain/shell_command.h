/// Commands that a report prints for the user to copy.
#pragma once

#include <string>
#include <string_view>

namespace veldtrim {

/// Returns `pattern` with each "{}" replaced by `path`, which is quoted for a POSIX shell if
/// necessary.
std::string commandFor(std::string_view pattern, const std::string& path);

} // namespace veldtrim
