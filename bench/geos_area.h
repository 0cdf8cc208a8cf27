/// The polygons of a model as a prepared geometry of GEOS.
#pragma once

#include "boundary/model/boundary_model.h"
#include "geometry/elevation_point.h"

#include <geos_c.h>

namespace veldtrim::bench {

class GeosArea {
public:
    explicit GeosArea(const BoundaryModel& model);
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
