/// Lines into a text file, each by itself.
#pragma once

#include "platform/file.h"
#include "text/line_reader.h"

#include <string>
#include <system_error>

namespace veldtrim {

/// Writes lines to a file, each with the platform's line end and in one write of the system, so
/// that the file holds whole lines at any moment.
class LineWriter {
public:
    /// Creates the file at `path`, or empties it; see PlatformFile.
    explicit LineWriter(const std::string& path);

    /// Throws std::system_error when the system fails; the file then ends with the line before.
    void write(const Line& line);

    /// Why the file could not be created; no error if it could.
    [[nodiscard]] std::error_code openError() const { return file_.openError(); }

    /// Throws std::system_error when the system reports that lines did not arrive.
    void close() { file_.close(); }

private:
    PlatformFile file_;
    std::string assembled_;
};

} // namespace veldtrim
