/// Boundary files among the files that GDAL opens.
#pragma once

#include "area/boundary_features.h"

#include <string>

#include <gdal_priv.h>

namespace veldtrim {

/// Whether the file is XML and names the element TavelDGM in its first 64 KiB. Usually looks at the
/// first KiB only, because GDAL asks for every file that it opens.
bool looksLikeBoundary(GDALOpenInfo& file);

/// Whether the name is one of GDAL's virtual files, such as "/vsizip/area.zip/boundary.xml".
bool isVirtual(const std::string& name);

/// Reads the file, which may be virtual, into `features`, which must be new. Returns why that
/// failed, as a predicate such as "is empty", or an empty text if all is well.
std::string readSource(const std::string& name, BoundaryFeatures& features);

} // namespace veldtrim
