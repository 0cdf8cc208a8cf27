/// What the process needs before it does anything else.
#pragma once

namespace veldtrim {

/// Makes a run independent of who listens to it: a receiver that closes its end of standard output
/// or standard error does not end the process, and a standard stream that the caller has closed is
/// opened to nowhere, so that no data file takes its place and receives console lines. A file that
/// reaches the size that the system allows fails like one on a full disk.
///
/// On Windows, where it can, makes paths and console lines UTF-8 for the length of the run.
void setUpProcess();

/// Whether narrow paths are UTF-8 where the file-system library expects another encoding: on
/// Windows, where the process runs in UTF-8.
bool pathsAreUtf8();

} // namespace veldtrim
