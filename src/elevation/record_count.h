/// Counts the records of elevation point files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>

namespace veldtrim {

/// Returns the number of records in the elevation file at `path`: the number of its line feeds
/// minus one for the header. A file that cannot be opened or has no line feed gives -1.
///
/// A last line without a line feed does not count, but a blank line does. Reads the file once, in
/// blocks; memory does not grow with its size. Throws std::length_error, which names the file, if
/// the number does not fit the result, and std::system_error if reading fails.
std::int32_t countRecords(std::string path);

/// The same. Sets `openError` to the reason why the file could not be opened, or clears it.
std::int32_t countRecords(std::string path, std::error_code& openError);

/// Returns the number of line feeds among `size` bytes.
std::int64_t countLineFeeds(const char* at, std::size_t size);

/// Returns the number of records of the file at `path` in the form in which a run counts them.
/// Throws std::length_error, which names the file, if it does not fit.
std::int32_t toRecordCount(std::int64_t records, const std::string& path);

} // namespace veldtrim
