/// Reads text files line by line.
#pragma once

#include "platform/file.h"

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace veldtrim {

/// One line, as a view into its reader's buffer.
struct Line {
    /// The line without its line end.
    std::string_view text;

    /// The line with its line end, as in the file: `text` and a line feed, or `text`, a carriage
    /// return and a line feed. For a last line without a line feed, the same as `text`.
    std::string_view raw;
};

/// Reads a file in blocks and returns its lines.
///
/// A line ends at a line feed. One carriage return right before it belongs to the line end; any
/// other, such as one at the very end of the file, belongs to the line. The buffer has the size of
/// one block, or at most twice that of the longest line.
class LineReader {
public:
    /// Opens the file at `path`. A file that cannot be opened has no lines. Lines of more than
    /// `maxLength` bytes are returned in pieces of that length.
    explicit LineReader(const std::string& path,
                        std::size_t maxLength = std::numeric_limits<std::size_t>::max());

    /// Sets `line`, which is valid until the next call, to the next line. Returns false, with
    /// `line` empty, after the last line. Throws std::system_error if reading fails.
    bool next(Line& line);

    /// The same, but only if the whole line is already in memory; lines returned earlier then stay
    /// valid. Otherwise returns false and leaves `line` unchanged.
    bool nextAtHand(Line& line) { return takeNext(line, 0); }

    /// Why the file could not be opened; no error if it could.
    [[nodiscard]] std::error_code openError() const { return file_.openError(); }

    void close() { file_.close(); }

private:
    /// Returns the next line in `line` if it ends within the bytes at hand, whose first `searched`
    /// bytes contain no line feed.
    bool takeNext(Line& line, std::size_t searched);

    /// Reads more bytes after those at hand, which may move. Returns false at the end of the file.
    bool readMore();

    PlatformFile file_;
    std::size_t maxLength_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; ///< the next line's first byte in `buffer_`
    std::size_t end_ = 0;   ///< the position after the last byte at hand
};

} // namespace veldtrim
