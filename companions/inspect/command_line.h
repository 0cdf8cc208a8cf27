/// The command line of veldtrim-inspect.
#pragma once

namespace veldtrim {

/// Inspects as the arguments say and prints the report. Returns the exit code: 0 when a run would
/// keep something, 1 when it would fail or keep nothing, 2 for a wrong command line. Throws when
/// the picture cannot be written, and for lack of memory.
int inspectCommand(int argc, char** argv);

} // namespace veldtrim
