/// Recognises files that users take for GeoJSON.
#pragma once

#include <string>

namespace veldtrim {

/// Throws std::runtime_error, which says how to convert it, if the source is a file of a kind that
/// is not JSON, such as a shapefile. Standard input is not examined.
void refuseOtherKinds(const std::string& source);

} // namespace veldtrim
