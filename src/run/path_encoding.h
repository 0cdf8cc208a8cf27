/// The encoding of paths in the file-system library.
#pragma once

namespace veldtrim {

/// Makes the file-system library use the encoding of the process for narrow paths. Call this once,
/// after setUpProcess and before the first path is used. Changes nothing on platforms where the
/// library does not convert paths.
void adoptPathEncoding();

} // namespace veldtrim
