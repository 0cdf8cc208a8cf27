/// What the targets that work on files share: a directory, and a console that nobody reads.
#pragma once

#include "support/temporary_directory.h"

#include <iostream>
#include <streambuf>

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

} // namespace veldtrim::fuzz
