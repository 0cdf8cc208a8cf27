/// Cuts large tiles into parts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// Returns where to cut the elevation file at `path`, of `size` bytes, into parts of about
/// `partSize` bytes: positions after line feeds, in increasing order, of which the first lies
/// behind the header line and the last before the end of the file.
///
/// The result is empty if the file is not an input file, so that it is skipped only once, or if it
/// has no line feeds where it could be cut. Reads only a little of the file, unless its lines are
/// long; time and memory never exceed those of reading it once. Throws std::system_error if the
/// file cannot be read.
std::vector<std::int64_t> cutPositions(const std::string& path, std::int64_t size,
                                       std::int64_t partSize);

/// Appends the bytes of the file at `from` that the part from `begin` to `end` consists of to a new
/// file at `to`, behind the header line of the file unless the part itself begins with it. `end` is
/// 0 if the part ends where the file ends.
///
/// Returns how many records of the file the part contains. Throws std::system_error, which names
/// the file and the reason, if a file cannot be read or written.
std::int64_t copyPart(const std::string& from, std::int64_t begin, std::int64_t end,
                      const std::string& to);

/// Appends what follows the first line of the file at `from` to the file at `to`, which it cuts off
/// after `size` bytes before. Returns the new size. Throws as copyPart does.
std::int64_t appendWithoutHeader(const std::string& from, const std::string& to, std::int64_t size);

/// Returns the length of the first line of the file at `path`, with its line feed, or 0 if it has
/// no line feed. Throws std::system_error if the file cannot be read.
std::int64_t headerLength(const std::string& path);

} // namespace veldtrim
