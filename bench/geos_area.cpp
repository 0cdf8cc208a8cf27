#include "geos_area.h"

#include <cstddef>
#include <vector>

namespace veldtrim::bench {

namespace {

GEOSGeometry* makePolygon(GEOSContextHandle_t context, const BoundaryModel& model,
                          const BoundaryPolygon& polygon) {
    const std::size_t size = polygon.vertexIndices.size();
    GEOSCoordSequence* const ring =
        GEOSCoordSeq_create_r(context, static_cast<unsigned>(size + 1), 2);
    for (std::size_t i = 0; i <= size; ++i) {
        const auto index = static_cast<std::size_t>(polygon.vertexIndices[i % size]);
        const BoundaryVertex& vertex = model.vertices()[index];
        GEOSCoordSeq_setXY_r(context, ring, static_cast<unsigned>(i), vertex.x, vertex.y);
    }
    return GEOSGeom_createPolygon_r(context, GEOSGeom_createLinearRing_r(context, ring), nullptr,
                                    0);
}

GEOSGeometry* makeGeometry(GEOSContextHandle_t context, const BoundaryModel& model) {
    std::vector<GEOSGeometry*> polygons;
    polygons.reserve(model.polygons().size());
    for (const BoundaryPolygon& polygon : model.polygons()) {
        polygons.push_back(makePolygon(context, model, polygon));
    }
    return polygons.size() == 1
               ? polygons.front()
               : GEOSGeom_createCollection_r(context, GEOS_MULTIPOLYGON, polygons.data(),
                                             static_cast<unsigned>(polygons.size()));
}

} // namespace

GeosArea::GeosArea(const BoundaryModel& model)
    : context_(GEOS_init_r()), geometry_(makeGeometry(context_, model)),
      prepared_(GEOSPrepare_r(context_, geometry_)) {}

GeosArea::~GeosArea() {
    GEOSPreparedGeom_destroy_r(context_, prepared_);
    GEOSGeom_destroy_r(context_, geometry_);
    GEOS_finish_r(context_);
}

bool GeosArea::intersects(const ElevationPoint& point) {
    GEOSGeometry* const asked = GEOSGeom_createPointFromXY_r(context_, point.x, point.y);
    const char answer = GEOSPreparedIntersects_r(context_, prepared_, asked);
    GEOSGeom_destroy_r(context_, asked);
    return answer == 1;
}

} // namespace veldtrim::bench
