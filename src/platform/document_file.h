/// Reads a document file as a whole.
#pragma once

#include <cstdint>
#include <string>

namespace veldtrim {

/// Replaces `text` with the bytes of the file at `path`.
///
/// Returns false if the file is not a regular file, is empty, has more than `mostBytes` bytes or
/// cannot be read as a whole; the content of `text` is then undefined. Never waits for a pipe or a
/// device.
bool readDocumentFile(const char* path, std::int64_t mostBytes, std::string& text);

} // namespace veldtrim
