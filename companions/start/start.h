/// How each companion program starts and ends.
#pragma once

namespace veldtrim {

/// What a companion does with the arguments of `main`. Returns the exit code.
using Command = int (*)(int argc, char** argv);

/// Sets up the process as Veldtrim does and runs the command. Returns its exit code. Reports an
/// exception on standard error and returns 1.
int startCompanion(Command command, int argc, char** argv);

} // namespace veldtrim
