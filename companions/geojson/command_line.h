/// The command line of veldtrim-boundary.
#pragma once

namespace veldtrim {

/// Converts what the arguments name. Returns the exit code: 0 if the target was written, 1 if the
/// conversion was refused or failed, which it reports on standard error, and 2 for a wrong command
/// line. Throws std::bad_alloc if memory runs out.
int boundaryCommand(int argc, char** argv);

} // namespace veldtrim
