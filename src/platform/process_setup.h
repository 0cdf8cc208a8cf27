/// Prepares the process for a run.
#pragma once

namespace veldtrim {

/// Makes a run independent of the readers of its standard streams. The process continues when a
/// reader closes its end. A standard stream that is closed from the start is connected to the null
/// device, so that no data file gets its descriptor and receives console lines. Writing to a file
/// that has reached the size limit of the system fails as it does on a full disk.
///
/// On Windows, if possible, also makes paths and console lines UTF-8 for the duration of the run.
void setUpProcess();

/// Makes a write to a pipe without a reader fail instead of ending the process with SIGPIPE. A
/// handler that the program has set for this signal stays in place.
///
/// This is the only function that changes the signal: `setUpProcess` calls it for the console
/// lines, and the status-message library calls it because it is also linked by programs that do not
/// call `setUpProcess`. It applies to the whole process and to the programs that it starts.
void ignorePipeSignal() noexcept;

/// Whether narrow paths are UTF-8 although the file-system library expects another encoding. This
/// can happen only on Windows.
bool pathsAreUtf8();

} // namespace veldtrim
