#pragma once

#include <cstdint>
#include <string>

namespace veldtrim {

/// Replaces `text` by the bytes of the regular file at `path`, as they are, if there are at least
/// one and at most `mostBytes` of them. False for anything else, and when the file cannot be read
/// whole; `text` then holds any part of it. Never waits for a pipe or a device.
bool readDocumentFile(const char* path, std::int64_t mostBytes, std::string& text);

} // namespace veldtrim
