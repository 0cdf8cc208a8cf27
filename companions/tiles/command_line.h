/// The command line of veldtrim-tiles.
#pragma once

namespace veldtrim {

/// Does what the arguments say. Returns the exit code: 0 if it was done, 1 if it was refused or
/// failed, which is reported, and 2 for a wrong command line. Throws what the steps throw.
int tilesCommand(int argc, char** argv);

} // namespace veldtrim
