/// What a process needs before it does anything else.
#pragma once

namespace veldtrim {

/// Makes a run independent of who listens to it. A receiver that closes its end of standard output
/// or standard error does not end the process. A standard stream that the caller has closed is
/// opened to nowhere, so that no data file takes its place and receives console lines. A file that
/// reaches the size that the system allows fails like one on a full disk.
///
/// On Windows, where it can, makes paths and console lines UTF-8 for the length of the run.
void setUpProcess();

/// Makes a write to a pipe that nobody reads fail, where the system would end the process with
/// SIGPIPE; a handler that the program has set for that signal stays.
///
/// This is the only place that touches the signal: `setUpProcess` calls it for the console lines,
/// and the status messages call it too, because programs without that set-up also link them. It
/// holds for the whole process and for the programs that this starts.
void ignorePipeSignal() noexcept;

/// Whether narrow paths are UTF-8 where the file-system library expects another encoding: on
/// Windows, where the process runs in UTF-8.
bool pathsAreUtf8();

} // namespace veldtrim
