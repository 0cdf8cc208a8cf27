/// Recognises files that users take for GeoJSON.
#pragma once

#include <string>

namespace veldtrim {

/// Throws std::runtime_error, which says how to convert it, if the source is a file of a kind that
/// is not JSON, such as a shapefile. Only regular files are examined: standard input and pipes can
/// be read only once.
void refuseOtherKinds(const std::string& source);

} // namespace veldtrim
