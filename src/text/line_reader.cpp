#include "text/line_reader.h"

#include <algorithm>
#include <cstring>

namespace veldtrim {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

} // namespace

LineReader::LineReader(const std::string& path, std::size_t maxLength)
    : file_(PlatformFile::openForReading(path)), maxLength_(maxLength) {}

bool LineReader::next(Line& line) {
    while (atHand().empty() && end_ - begin_ <= maxLength_) {
        if (!readMore()) {
            line.text = line.raw = {buffer_.data() + begin_, end_ - begin_};
            begin_ = end_;
            return !line.raw.empty();
        }
    }
    const std::string_view bytes(buffer_.data() + begin_, std::min(end_ - begin_, maxLength_ + 1));
    const std::size_t lineFeed = bytes.find('\n');
    if (lineFeed == std::string_view::npos) {
        line.text = line.raw = bytes.substr(0, maxLength_);
    } else {
        line = lineUpTo(bytes.data(), bytes.data() + lineFeed);
    }
    begin_ += line.raw.size();
    return true;
}

bool LineReader::readMore() {
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = lastEnd_ = 0; // no whole line is left
    }
    if (end_ == buffer_.size()) {
        // A line fills the whole buffer. Doubling keeps the work linear in the line's length.
        buffer_.resize(buffer_.empty() ? blockSize : buffer_.size() * 2);
    }
    const std::size_t got = file_.read(buffer_.data() + end_, buffer_.size() - end_);
    const std::size_t lineFeed = std::string_view(buffer_.data() + end_, got).rfind('\n');
    lastEnd_ = lineFeed == std::string_view::npos ? lastEnd_ : end_ + lineFeed + 1;
    end_ += got;
    return got != 0;
}

} // namespace veldtrim
