/// The polygons of a shape as a prepared geometry of GEOS.
#pragma once

#include "geometry/elevation_point.h"
#include "shapes.h"

#include <geos_c.h>

#include <vector>

namespace veldtrim::bench {

class GeosArea {
public:
    explicit GeosArea(const std::vector<Outline>& outlines);
    GeosArea(const GeosArea&) = delete;
    GeosArea& operator=(const GeosArea&) = delete;
    ~GeosArea();

    /// Whether the point lies in one of the polygons or on its boundary.
    bool intersects(const ElevationPoint& point);

private:
    GEOSContextHandle_t context_;
    GEOSGeometry* geometry_;
    const GEOSPreparedGeometry* prepared_;
};

} // namespace veldtrim::bench
