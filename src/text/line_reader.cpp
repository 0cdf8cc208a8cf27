#include "text/line_reader.h"

#include <cstring>

namespace veldtrim {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

std::string_view withoutCarriageReturn(std::string_view text) {
    if (!text.empty() && text.back() == '\r') {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

LineReader::LineReader(const std::string& path, std::size_t maxLength)
    : file_(PlatformFile::openForReading(path)), maxLength_(maxLength) {}

bool LineReader::next(Line& line) {
    std::size_t searched = 0; // bytes at hand that are known to contain no line feed
    while (!takeNext(line, searched)) {
        searched = end_ - begin_;
        if (!readMore()) {
            line.text = line.raw = {buffer_.data() + begin_, searched};
            begin_ = end_;
            return searched != 0;
        }
    }
    return true;
}

bool LineReader::takeNext(Line& line, std::size_t searched) {
    const char* const first = buffer_.data() + begin_;
    const std::size_t atHand = end_ - begin_;
    const void* const lineFeed =
        atHand == searched ? nullptr : std::memchr(first + searched, '\n', atHand - searched);
    const std::size_t length =
        lineFeed == nullptr ? atHand
                            : static_cast<std::size_t>(static_cast<const char*>(lineFeed) - first);
    if (length > maxLength_) {
        line.text = line.raw = {first, maxLength_};
        begin_ += maxLength_;
        return true;
    }
    if (lineFeed == nullptr) {
        return false;
    }
    line.raw = {first, length + 1};
    line.text = withoutCarriageReturn({first, length});
    begin_ += length + 1;
    return true;
}

bool LineReader::readMore() {
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    if (end_ == buffer_.size()) {
        // A line fills the whole buffer. Doubling keeps the work linear in the line's length.
        buffer_.resize(buffer_.empty() ? blockSize : buffer_.size() * 2);
    }
    const std::size_t got = file_.read(buffer_.data() + end_, buffer_.size() - end_);
    end_ += got;
    return got != 0;
}

} // namespace veldtrim
