/// The file that a new boundary goes to.
#pragma once

#include "platform/new_file.h"

#include <optional>
#include <string>
#include <string_view>

namespace veldtrim {

/// A local file or one of GDAL's virtual files, which has its name only when it is complete and
/// never replaces a file.
///
/// The text for a virtual file is kept in memory until it is complete.
class Target {
public:
    /// Throws std::system_error, which names the file and the reason, if the file exists or cannot
    /// be created.
    explicit Target(std::string name);

    [[nodiscard]] const std::string& name() const { return name_; }

    /// Appends `bytes`. Throws std::system_error, which names the file and the reason, if the
    /// system fails.
    void write(std::string_view bytes);

    /// Gives the complete file its name. Throws std::system_error, which names the file and the
    /// reason, if bytes were lost or the file exists by now; there is then no new file.
    void publish();

private:
    std::string name_;
    std::optional<NewFile> file_; ///< none for a virtual file
    std::string text_;            ///< of a virtual file
};

} // namespace veldtrim
