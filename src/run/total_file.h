/// The file with the number of kept records.
#pragma once

#include <cstdint>
#include <string>
#include <system_error>

namespace veldtrim {

/// The name of the file in the output directory that contains the number of kept records.
inline constexpr const char* totalFileName = "total_node_count.txt";

/// Creates the file at `path`, or empties it if it exists, and writes the number as its only line.
/// Returns why it could not be created or written; no error if it was.
std::error_code writeTotal(const std::string& path, std::int64_t keptTotal);

} // namespace veldtrim
