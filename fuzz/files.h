/// What the targets that work on files share: a directory, a console that nobody reads, and lines.
#pragma once

#include "support/temporary_directory.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <streambuf>
#include <string_view>
#include <vector>

namespace veldtrim::fuzz {

/// A directory for the whole process; fuzz/run places it in memory and removes it.
inline const test::TemporaryDirectory& scratch() {
    static const test::TemporaryDirectory directory;
    return directory;
}

/// Takes standard output away from the trace of a run as long as it lives.
class QuietConsole {
public:
    QuietConsole() : previous_(std::cout.rdbuf(&nowhere_)) {}
    ~QuietConsole() { std::cout.rdbuf(previous_); }
    QuietConsole(const QuietConsole&) = delete;
    QuietConsole& operator=(const QuietConsole&) = delete;

private:
    class Nowhere : public std::streambuf {
        int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    };
    Nowhere nowhere_;
    std::streambuf* previous_;
};

/// The lines with their ends. The last one may have none.
inline std::vector<std::string_view> rawLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

inline std::string_view withoutLineEnd(std::string_view raw) {
    if (raw.ends_with("\r\n")) {
        return raw.substr(0, raw.size() - 2);
    }
    return raw.ends_with('\n') ? raw.substr(0, raw.size() - 1) : raw;
}

} // namespace veldtrim::fuzz
