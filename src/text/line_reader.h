/// Lines of a text file, one after the other.
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

    /// The line with its line end as it stands in the file: `text` and a line feed, or `text`, a
    /// carriage return and a line feed; the same as `text` for a last line without a line feed.
    std::string_view raw;
};

/// Reads a file in blocks and hands out its lines.
///
/// A line ends at a line feed; exactly one carriage return right before it belongs to the line
/// end. A lone carriage return, also one at the end of a file without a line feed, stays in the
/// line. Memory is one block, or the longest line where that is longer.
class LineReader {
public:
    /// Opens the file at `path`. A file that cannot be opened has no lines. A line of more than
    /// `maxLength` bytes comes in pieces of that length.
    explicit LineReader(const std::string& path,
                        std::size_t maxLength = std::numeric_limits<std::size_t>::max());

    /// Moves to the next line; `line` is valid until the next call. Returns false, with `line`
    /// empty, after the last line. Throws std::system_error when the system fails to read.
    bool next(Line& line);

    /// The same for a line that has been read from the file already: lines that were handed out
    /// before stay valid. Returns false, with `line` as it was, when there is no such line.
    bool nextAtHand(Line& line) { return takeNext(line, 0); }

    /// Why the file could not be opened; no error if it could.
    [[nodiscard]] std::error_code openError() const { return file_.openError(); }

    void close() { file_.close(); }

private:
    /// Hands out the next line if it ends among the bytes at hand, of which the first `searched`
    /// hold no line feed.
    bool takeNext(Line& line, std::size_t searched);

    /// Reads more behind the bytes at hand, which may move; false at the end of the file.
    bool readMore();

    PlatformFile file_;
    std::size_t maxLength_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; ///< the next line's first byte in `buffer_`
    std::size_t end_ = 0;   ///< behind the last byte at hand
};

} // namespace veldtrim
