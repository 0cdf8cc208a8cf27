#include "terminal_progress.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

namespace veldtrim::pulsenote {

namespace {

/// "100.0" is as wide as it gets: every line covers the one before.
constexpr std::size_t NumberWidth = 5;

std::string percentage(double position) {
    double shown = std::clamp(position, 0.0, 100.0);
    if (shown < 100.0) {
        // Not "100.0" before the end is reached.
        shown = std::min(shown, 99.9);
    }
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                   std::chars_format::fixed, 1);
    const auto length = static_cast<std::size_t>(end.ptr - digits.data());
    std::string text(NumberWidth - std::min(NumberWidth, length), ' ');
    text.append(digits.data(), length);
    text += " %";
    return text;
}

} // namespace

std::string TerminalProgress::draw(double position) {
    std::string line = percentage(position);
    if (line == shown_) {
        return {};
    }
    shown_ = std::move(line);
    return "\r" + shown_;
}

std::string TerminalProgress::erase() {
    if (shown_.empty()) {
        return {};
    }
    std::string erasure = "\r";
    erasure.append(shown_.size(), ' ');
    erasure += '\r';
    shown_.clear();
    return erasure;
}

} // namespace veldtrim::pulsenote
