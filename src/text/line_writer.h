/// Writes text files line by line.
#pragma once

#include "platform/file.h"
#include "text/line_reader.h"

#include <string>
#include <system_error>

namespace veldtrim {

/// Writes each line, with the platform's line end, in one system write, so that the file contains
/// only whole lines at any time.
class LineWriter {
public:
    /// Creates the file at `path`, or empties it; see PlatformFile.
    explicit LineWriter(const std::string& path);

    /// Appends `line`. Throws std::system_error if writing fails; the file then ends with the
    /// previous line.
    void write(const Line& line);

    /// Why the file could not be created; no error if it could.
    [[nodiscard]] std::error_code openError() const { return file_.openError(); }

    /// Closes the file. Throws std::system_error if the system reports that written lines were
    /// lost; the file is closed even then.
    void close() { file_.close(); }

private:
    PlatformFile file_;
    std::string assembled_;
};

} // namespace veldtrim
