/// The encoding of the paths that the file-system library takes and returns.
#pragma once

namespace veldtrim {

/// Makes the file-system library read narrow paths in the encoding of the process. To be called
/// once, after setUpProcess and before the first path. Changes nothing where the library does not
/// convert paths.
void adoptPathEncoding();

} // namespace veldtrim
