/// How many records an elevation point file holds.
#pragma once

#include <cstdint>
#include <string>
#include <system_error>

namespace veldtrim {

/// Number of records in the elevation file at `path`: its line feeds less one, the header's.
///
/// A last line without a line feed does not count; a blank line does. Reads the file once, in
/// blocks; memory does not grow with its size. Returns -1 for a file that cannot be opened or holds
/// no line feed. Throws std::length_error, which names the file, when the number does not fit the
/// result, and std::system_error when the system fails to read.
std::int32_t countRecords(std::string path);

/// The same, and `openError` says why the file could not be opened: no error if it could.
std::int32_t countRecords(std::string path, std::error_code& openError);

} // namespace veldtrim
