/// Reads text files line by line.
#pragma once

#include "platform/file.h"
#include "text/eight_characters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

/// The line that begins at `first` and ends with `lineFeed`.
inline Line lineUpTo(const char* first, const char* lineFeed) {
    const char* const end = lineFeed != first && lineFeed[-1] == '\r' ? lineFeed - 1 : lineFeed;
    return {{first, end}, {first, lineFeed + 1}};
}

/// Returns the first line feed among the characters [at, end), of which there must be one.
inline const char* findLineFeed(const char* at, const char* end) noexcept {
    // Most often it is near, and then this is faster than a call.
    if (detail::firstIsLowest && end - at >= 8) {
        if (const std::uint64_t marks = detail::markZeros(detail::loadEight(at, '\n'))) {
            return at + detail::countBelow(marks);
        }
        at += 8;
    }
    return static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
}

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
                        std::size_t maxLength = std::numeric_limits<std::size_t>::max() - 1);

    /// Sets `line`, which is valid until the next call, to the next line. Returns false, with
    /// `line` empty, after the last line. Throws std::system_error if reading fails.
    bool next(Line& line);

    /// The next lines, as far as they are already in memory as a whole, with their line feeds.
    /// Valid, like the lines in it, until `next` is called.
    [[nodiscard]] std::string_view atHand() const {
        return {buffer_.data() + begin_, std::max(begin_, lastEnd_) - begin_};
    }

    /// Makes the next line that which begins `size` bytes after the beginning of `atHand`.
    void skip(std::size_t size) { begin_ += size; }

    /// Why the file could not be opened; no error if it could.
    [[nodiscard]] std::error_code openError() const { return file_.openError(); }

    void close() { file_.close(); }

private:
    /// Reads more bytes after those in memory, which may move. Returns false at the end of the
    /// file.
    bool readMore();

    PlatformFile file_;
    std::size_t maxLength_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;   ///< the next line's first byte in `buffer_`
    std::size_t end_ = 0;     ///< the position after the last byte in memory
    std::size_t lastEnd_ = 0; ///< the position after the last line feed in memory
};

} // namespace veldtrim
