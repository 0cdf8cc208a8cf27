/// Polygons of boundary files as geometries of GDAL, and the other way round.
#pragma once

#include "area/boundary_features.h"
#include "area/map_polygon.h"

#include <memory>
#include <string>
#include <vector>

#include <ogr_geometry.h>

namespace veldtrim {

/// Returns the geometry with these positions, to the last bit; none for `Nothing`.
std::unique_ptr<OGRGeometry> geometryOf(MapShape shape, const MapRing& positions);

/// Returns the polygons of a polygon, a triangle or a multipolygon, without third coordinates, and
/// none of a geometry that is missing or empty. Throws FeatureRefusal, which names the feature, for
/// another geometry.
std::vector<MapPolygon> polygonsOf(const std::string& feature, const OGRGeometry* geometry);

} // namespace veldtrim
