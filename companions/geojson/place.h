/// Where a conversion reads from and writes to: a file, or "-" for a standard stream.
#pragma once

#include "platform/new_file.h"

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace veldtrim {

/// Whether the argument stands for a standard stream.
inline bool isStandardStream(const std::string& argument) {
    return argument == "-";
}

/// Returns all bytes of the file, or of standard input. Throws std::runtime_error or
/// std::system_error, which names the file and the reason, if it cannot be read as a whole.
std::string readWhole(const std::string& argument);

/// A new file, or standard output, that receives all of a text or nothing.
class Destination {
public:
    /// Throws std::runtime_error, which says what to do, if the file exists, and std::system_error
    /// if it cannot be created. Creates only an unfinished file beside it; see NewFile.
    explicit Destination(const std::string& argument);

    /// Appends to the text. Throws std::system_error if the system fails.
    void write(std::string_view text);

    /// Completes the file, or writes the text to standard output. Throws std::runtime_error, which
    /// says what to do, if the file has come to exist in the meantime, and std::system_error if the
    /// system fails; a part of the text may then be on standard output.
    void publish();

private:
    [[noreturn]] void fail(const std::system_error& error) const;

    std::string target_;
    std::optional<NewFile> file_;
    std::string text_; ///< for standard output
};

} // namespace veldtrim
