/// Creates a file that has its name only when it is complete.
#pragma once

#include "platform/file.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// A file that is written under a name of its own beside its target, the target's name followed by
/// ".part-" and a number, and is renamed to the target when it is complete.
///
/// The target is never replaced. Until `publish` returns, it does not exist. Destroying an
/// unpublished object removes the unfinished file. A process that a signal ends leaves it behind;
/// see removeFileWhenInterrupted.
class NewFile {
public:
    /// Creates the unfinished file. Throws std::system_error, which names the file and the reason,
    /// if `target` exists, even as a dangling link, or if no file can be created beside it.
    explicit NewFile(std::string target);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    /// Appends `bytes`. Throws std::system_error, which names the file and the reason, if the
    /// system fails.
    void write(std::string_view bytes);

    /// Stores the file on its device and gives it the name of the target. Throws std::system_error,
    /// which names the file and the reason, if bytes were lost, or if the target has come to exist
    /// in the meantime. The target is then unchanged.
    void publish();

private:
    void forget();

    std::string target_;
    std::string unfinished_; ///< empty when published
    PlatformFile file_;
};

/// Makes the signals that users and systems end programs with, SIGINT, SIGTERM and SIGHUP, remove
/// the unfinished file of the latest NewFile before they end the process. Signals that are ignored
/// or have a handler stay as they are. Does nothing on Windows, which does not remove open files.
/// For programs that write one file at a time; a library leaves the signals to its program.
void removeFileWhenInterrupted();

} // namespace veldtrim
