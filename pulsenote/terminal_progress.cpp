#include "terminal_progress.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace veldtrim::pulsenote {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::chrono::milliseconds shortestPause{100};

/// Longer lines would often be wrapped when the user narrows the window.
constexpr std::size_t longestLine = 79;

/// The last column stays free, because a character in it moves some terminals to the next line.
std::size_t usable(std::size_t width) {
    return width > 0 ? width - 1 : 0;
}

/// Seconds after which an average becomes meaningful.
constexpr double shortestAverage = 0.1;

std::string fixed(double value, int decimals) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals);
    return {digits.data(), end.ptr};
}

std::string percentage(double position) {
    constexpr std::size_t numberWidth = 5;
    // "100.0" is shown only at the end.
    std::string text = fixed(position < 100.0 ? std::min(position, 99.9) : 100.0, 1);
    text.insert(0, numberWidth - std::min(numberWidth, text.size()), ' ');
    return text + " %";
}

/// A number in at most five characters: "999", "12.3k", "1.23M".
std::string shortNumber(double value) {
    constexpr std::array<char, 4> units{'k', 'M', 'G', 'T'};
    if (value < 999.5) {
        return fixed(value, 0);
    }
    std::size_t unit = 0;
    value /= 1000.0;
    while (value >= 999.5 && unit + 1 < units.size()) {
        value /= 1000.0;
        ++unit;
    }
    value = std::min(value, 999.0);
    return fixed(value, value < 9.995 ? 2 : value < 99.95 ? 1 : 0) + units[unit];
}

/// "0:07", "12:34", "1:02:03".
std::string duration(double seconds) {
    constexpr double longest = 360000.0;
    if (!(seconds < longest)) {
        return "> 99 h";
    }
    const auto rest = static_cast<std::int64_t>(std::ceil(seconds));
    const auto twoDigits = [](std::int64_t value) {
        return (value < 10 ? "0" : "") + std::to_string(value);
    };
    const std::int64_t hours = rest / 3600;
    const std::int64_t minutes = rest / 60 % 60;
    return (hours > 0 ? std::to_string(hours) + ':' + twoDigits(minutes)
                      : std::to_string(minutes)) +
           ':' + twoDigits(rest % 60);
}

/// A bar of `width` columns, brackets included.
std::string bar(double position, std::size_t width) {
    const std::size_t inside = width - 2;
    const auto filled = static_cast<std::size_t>(position / 100.0 * static_cast<double>(inside));
    std::string text = "[";
    text.append(filled, '#');
    text.append(inside - filled, '.');
    return text + ']';
}

} // namespace

void TerminalProgress::beginStretch(double start, double end, int steps, Time now) {
    if (!begun_) {
        begun_ = now;
    }
    const bool joins = start == stretchEnd_;
    if (joins && recordsPerPercent_ == 0.0 && steps > 0 && end > start) {
        recordsPerPercent_ = steps / (end - start);
    }
    stretchEnd_ = end;
}

std::string TerminalProgress::draw(double position, Time now, std::size_t width) {
    if (drawn_ && now - *drawn_ < shortestPause) {
        return {};
    }
    std::string line = compose(std::clamp(position, 0.0, 100.0), now, width);
    if (line == shown_) {
        return {};
    }
    drawn_ = now;
    // Blanks overwrite the rest of a longer previous line, but not beyond the terminal's width. If
    // the terminal became narrower, that can include the last column: a blank there does no harm,
    // because a carriage return follows.
    const std::size_t covered = std::min(shown_.size(), width);
    std::string text = "\r" + line;
    if (covered > line.size()) {
        text.append(covered - line.size(), ' ');
        text += "\r" + line;
    }
    shown_ = std::move(line);
    return text;
}

std::string TerminalProgress::compose(double position, Time now, std::size_t width) const {
    constexpr std::size_t shortestBar = 10;
    constexpr std::size_t longestBar = 42;
    const std::size_t room = std::min(usable(width), longestLine);
    const std::string percent = percentage(position);
    const double elapsed = begun_ ? Seconds(now - *begun_).count() : 0.0;
    std::string rate;
    std::string left;
    if (elapsed >= shortestAverage && position > 0.0) {
        if (recordsPerPercent_ > 0.0) {
            rate = "  " + shortNumber(recordsPerPercent_ * position / elapsed);
        }
        left = "  " + duration(elapsed * (100.0 - position) / position);
    }
    const std::string longTail = " " + percent + (rate.empty() ? "" : rate + " records/s") +
                                 (left.empty() ? "" : left + " left");
    const std::string shortTail = " " + percent + (rate.empty() ? "" : rate + "/s") + left;
    for (const std::string& tail : {longTail, shortTail}) {
        if (tail.size() + shortestBar <= room) {
            return bar(position, std::min(longestBar, room - tail.size())) + tail;
        }
    }
    for (const std::string& line : {percent + left, percent}) {
        if (line.size() <= room) {
            return line;
        }
    }
    return {};
}

std::string TerminalProgress::erase(std::size_t width) {
    if (shown_.empty()) {
        return {};
    }
    std::string erasure = "\r";
    erasure.append(std::min(shown_.size(), width), ' ');
    erasure += '\r';
    erased_ = std::exchange(shown_, {});
    return erasure;
}

std::string TerminalProgress::end(std::size_t width) {
    std::string erasure = erase(width);
    erased_.clear();
    return erasure;
}

std::string TerminalProgress::restore(std::size_t width) {
    if (erased_.size() <= usable(width)) {
        shown_ = std::exchange(erased_, {});
    }
    return shown_;
}

} // namespace veldtrim::pulsenote
