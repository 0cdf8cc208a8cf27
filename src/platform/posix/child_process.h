/// Starts other programs, without a shell in between.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veldtrim {

/// What to start, and where.
struct ChildCommand {
    /// The program, which is searched as a shell does unless it contains a slash, and its
    /// arguments.
    std::vector<std::string> words;

    /// The directory in which it starts. The following paths are relative to it.
    std::string directory;

    std::string input = "/dev/null"; ///< file for standard input
    std::string output;              ///< file for standard output: created, or emptied
    std::string errors;              ///< the same for standard error; may equal `output`

    /// Variables that are added to the environment.
    std::vector<std::pair<std::string, std::string>> variables;

    /// Whether it gets a process group of its own, so that `stop` reaches all that it starts, and
    /// the keys of the terminal do not.
    bool ownGroup = false;
};

/// How a program ended.
struct ChildEnd {
    int exitCode = 0; ///< if no signal ended it
    int signal = 0;   ///< the number of the signal that ended it, or 0

    [[nodiscard]] bool succeeded() const { return exitCode == 0 && signal == 0; }

    /// Returns "exit code 1" or "signal 9".
    [[nodiscard]] std::string text() const;
};

/// A program that was started and has not been waited for. If this process ends before it, the
/// system sends it SIGTERM. Destroying the object stops the program and waits for it.
class ChildProcess {
public:
    /// Starts the program. Throws std::system_error, which names it and the reason, if it cannot be
    /// started.
    explicit ChildProcess(const ChildCommand& command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Waits up to so many milliseconds, or until a signal arrives, for the end of the program.
    /// Returns how it ended, or nothing if it goes on.
    std::optional<ChildEnd> waitFor(int milliseconds);

    /// Waits for the end of the program, whatever signals arrive.
    ChildEnd wait();

    /// Sends SIGTERM to the program, and to its process group if it has one.
    void stop() const;

private:
    int number_ = -1; ///< of the process; negative when it has ended
    int watch_ = -1;  ///< descriptor that tells of its end
    bool ownGroup_;
};

} // namespace veldtrim
