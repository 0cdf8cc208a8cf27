/// The command line of veldtrim-inspect.
#pragma once

namespace veldtrim {

/// Inspects what the arguments name and prints the report. Returns the exit code: 0 if a run would
/// keep something, 1 if it would fail or keep nothing, 2 for a wrong command line. Throws
/// std::runtime_error or std::system_error if the picture cannot be written, and std::bad_alloc if
/// memory runs out.
int inspectCommand(int argc, char** argv);

} // namespace veldtrim
